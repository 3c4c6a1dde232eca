#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <boost/filesystem/operations.hpp>

#include "host/command_parts.h"

namespace libvarrow {

namespace {

namespace fs = boost::filesystem;

CLI::Option* takesOne(CLI::Option* option) {
  return option->type_size(1)->expected(1);
}

}  // namespace

CommandOptions::CommandOptions(Imp& imp) : imp_(imp) {}

CommandOptions::~CommandOptions() = default;

void CommandOptions::addOption(const std::string& name, std::string& value,
                               const std::string& about) {
  takesOne(imp_.app.add_option("--" + name, value, about))->type_name("TEXT");
}

void CommandOptions::addOption(const std::string& name, std::size_t& value,
                               const std::string& about) {
  takesOne(imp_.app.add_option("--" + name, value, about))->type_name("NUMBER");
}

void CommandOptions::addOption(const std::string& name, fs::path& value, const std::string& about) {
  const auto read = [&value, name](const std::string& text) {
    if (text.empty()) throw CLI::ValidationError("--" + name, "the path is empty");
    value = fs::absolute(text);
  };
  imp_.app.add_option_function<std::string>("--" + name, read, about)->type_name("PATH");
}

void CommandOptions::addOption(const std::string& name, std::vector<std::string>& values,
                               const std::string& about) {
  imp_.app.add_option("--" + name, values, about)
      ->type_name("TEXT")
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void CommandOptions::addChoice(const std::string& name, std::string& value,
                               const std::vector<std::string>& choices, const std::string& about) {
  takesOne(imp_.app.add_option("--" + name, value, about))->check(CLI::IsMember(choices));
}

void CommandOptions::addFlag(const std::string& name, bool& value, const std::string& about) {
  imp_.app.add_flag("--" + name, value, about);
}

void CommandOptions::addArgument(const std::string& name, std::string& value,
                                 const std::string& about) {
  imp_.app.add_option(name, value, about)->required()->type_name("");
}

void CommandOptions::addOptionalArgument(const std::string& name, std::string& value,
                                         const std::string& about) {
  imp_.app.add_option(name, value, about)->type_name("");
}

void CommandOptions::addArguments(const std::string& name, std::vector<std::string>& values,
                                  std::size_t least, const std::string& about) {
  CLI::Option* const option = imp_.app.add_option(name, values, about)->type_name("");
  option->expected(static_cast<int>(least), CLI::detail::expected_max_vector_size);
  if (least > 0) option->required();
}

}  // namespace libvarrow
