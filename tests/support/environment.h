// Environment variables of this process.
#pragma once

#include <string>

namespace test_support {

void setVariable(const char* name, const std::string& value);
void unsetVariable(const char* name);

/// Makes the C library read the time zone from the variable TZ again.
void readTimeZone();

}  // namespace test_support
