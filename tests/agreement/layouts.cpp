#include "agreement/layouts.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <fstream>
#include <iostream>
#include <iterator>

#include "agreement/Changes.h"
#include "agreement/classes.h"
#include "support/support.h"

namespace agreement {

using namespace test_support;
using libvarrow::Module;
using libvarrow::ModuleLoader;
using libvarrow::Rule;

namespace {

cppbind::ClassRegister& modules() {
  static ModuleLoader loader = newLoader();
  return loader.classRegister();
}

const cppbind::ClassRegister& rules() {
  static const auto reg = [] {
    cppbind::ClassRegister made;
    registerClasses<Rule>(made);
    return made;
  }();
  return reg;
}

cppbind::Faults checkModules(const std::string& text) {
  return libvarrow::checkPipelineText(text, modules());
}

Json::Value schemaOfModules() {
  return libvarrow::pipelineSchema(modules());
}

}  // namespace

const std::vector<Layout> kLayouts = {
    {"Chain", R"({"modules": OBJECTS})", &loadPipeline, &checkModules, &schemaOfModules},
    {"Named",
     R"({"named_modules": {"a": OBJECT, "b": OBJECT, "c": OBJECT},
         "chained_module": ["a", "b", "a"]})",
     &loadPipeline, &checkModules, &schemaOfModules},
    {"Object", R"({"mainModule": {"Chain": {"modules": OBJECTS}}})", &loadPipeline, &checkModules,
     &schemaOfModules},
    {"Rules", R"({"rule_level": 2, "rule_list": OBJECTS, "Bare": {}})",
     [](const Json::Value& file) {
       for (const Rule* rule : libvarrow::RuleLoader::loadRules(file, &rules())) delete rule;
     },
     [](const std::string& text) { return libvarrow::checkRuleText(text, rules()); },
     [] { return libvarrow::ruleFileSchema(rules()); }},
    {"ChainWithUnknownKeys", R"({"modules": OBJECTS})",
     [](const Json::Value& file) {
       if (libvarrow::pipelineLayout(file) != libvarrow::PipelineLayout::Chain)
         return loadPipeline(file);
       writeFile("file.json", Json::FastWriter().write(file));
       libvarrow::ModuleExecutor(&modules(), "file.json", true);
     },
     [](const std::string& text) { return libvarrow::checkPipelineText(text, modules(), true); },
     nullptr},
};

std::vector<Json::Value> randomFiles(const Layout& layout, unsigned count) {
  std::vector<Json::Value> files;
  for (unsigned seed = 0; seed < count; ++seed) {
    Changes changes(seed);
    std::string text = layout.file;
    for (std::size_t at = 0; (at = text.find("OBJECT")) != std::string::npos;) {
      const bool isList = text.compare(at, 7, "OBJECTS") == 0;
      text.replace(at, isList ? 7 : 6, Json::FastWriter().write(changes.objects(isList)));
    }
    files.push_back(json(text));
    changes.change(files.back());
  }
  return files;
}

std::vector<Outcome> outcomesOf(const Layout& layout, const std::vector<Json::Value>& files) {
  std::vector<Outcome> outcomes;
  // A child may have repeated the test with other outcomes: the number is that in the file.
  const auto loadRest = [&] {
    std::ofstream lines("outcomes");
    for (std::size_t i = std::stoul(readFile("first")); i < files.size(); ++i) {
      Json::Value outcome(Json::arrayValue);
      std::cerr << "\nfile:" << std::flush;
      try {
        layout.load(files[i]);
      } catch (const cppbind::ParseErrorException& error) {
        outcome.append(error.message());
        for (const std::string& element : error.path()) outcome.append(element);
      }
      lines << Json::FastWriter().write(outcome) << std::flush;
    }
  };
  // The children inherit the debug information that call stacks need.
  try {
    libvarrow::throwTraced("");
  } catch (const std::exception& error) {
    libvarrow::callStackOf(error);
  }
  while (outcomes.size() < files.size()) {
    writeFile("first", std::to_string(outcomes.size()));
    const ChildResult child = runInChild(loadRest);
    std::ifstream lines("outcomes");
    for (std::string line; std::getline(lines, line);) {
      const Json::Value outcome = json(line);
      Outcome& made = outcomes.emplace_back();
      if (outcome.empty()) continue;
      made = {Outcome::Threw, {}, outcome[0].asString()};
      for (auto element = std::next(outcome.begin()); element != outcome.end(); ++element) {
        made.path.push_back(element->asString());
      }
    }
    if (outcomes.size() == files.size()) break;
    outcomes.push_back(
        {Outcome::Ended, {}, child.errors.substr(child.errors.rfind("\nfile:") + 1)});
    if (child.signal == SIGABRT) continue;
    ADD_FAILURE() << files[outcomes.size() - 1] << child.errors;
  }
  return outcomes;
}

bool explains(const cppbind::Fault& fault, const Outcome& outcome) {
  if (outcome.kind == Outcome::Threw) {
    return fault.path == outcome.path && fault.message == outcome.text;
  }
  const std::pair<const char*, const char*> assertions[] = {
      {"module_type_names.size() == 1", "DynamicType object must have a unique key as it's type"},
      {"Assertion `rule'", " is not a rule"},
      {"jv.isArray()", "should be a list"},
      {"jv_module.isString()", "should be a string"},
      {"named_modules.find(module_name)", " is no named module"},
  };
  return contains(outcome.text, fault.what()) ||
         std::any_of(std::begin(assertions), std::end(assertions), [&](const auto& assertion) {
           return contains(outcome.text, assertion.first) &&
                  contains(fault.message, assertion.second);
         });
}

std::string registeredName(const std::string& name) {
  for (const auto& entry : modules().classes()) {
    if (boost::iequals(entry.second.name, name)) return entry.second.name;
  }
  return name;
}

}  // namespace agreement
