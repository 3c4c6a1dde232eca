// The data that the host and its plug-ins work on.
#pragma once

#include <libvarrow/module/ModuleData.h>

#include <string>
#include <vector>

// The name of the register that host and plug-ins share.
constexpr const char* kBakeryModules = "bakery modules";

struct BakeryData : libvarrow::ModuleData {
  ~BakeryData() override;  // not inline: only this library contains the type information

  std::vector<std::string> steps;
};
