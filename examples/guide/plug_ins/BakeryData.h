// What the host and its plug-ins work on.
#pragma once

#include <libvarrow/module/ModuleData.h>

#include <string>
#include <vector>

// The name of the registry that host and plug-ins share.
constexpr const char* kBakeryModules = "bakery modules";

struct BakeryData : libvarrow::ModuleData {
  ~BakeryData() override;  // not inline: its type is then this library's own, wherever it is used

  std::vector<std::string> steps;
};
