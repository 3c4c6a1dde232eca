// The messages of exceptions.
#pragma once

#include <exception>
#include <string>

namespace test_support {

/// What the exception that `call` throws says.
template <class Call>
std::string errorOf(Call call) {
  try {
    call();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace test_support
