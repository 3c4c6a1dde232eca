// Expensive files of 64 KB.
#include <functional>

#include "libvarrow/libvarrow.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;

constexpr std::size_t kSize = std::size_t{64} << 10;
constexpr const char* kFile = "hostile.json";

// Returns `head`, `part` as often as fits into the size, and `tail`.
std::string filled(const std::string& head, const std::string& part, const std::string& tail = "") {
  std::string text = head;
  while (text.size() + part.size() + tail.size() <= kSize) text += part;
  return text + tail;
}

std::string repeated(std::size_t times, const std::string& part) {
  std::string text;
  for (std::size_t i = 0; i < times; ++i) text += part;
  return text;
}

// Returns the widest content that fits inside `levels` of `open` and `close`.
std::string nested(std::size_t levels, const std::string& open, const std::string& head,
                   const std::string& part, const std::string& tail, const std::string& close) {
  return filled(repeated(levels, open) + head, part, tail + repeated(levels, close));
}

struct Step : Module {
  void processImp(ModuleData*) override {}
};

struct Any : Rule {
  std::vector<std::string> texts;
  boost::posix_time::ptime time;
  boost::posix_time::time_duration duration;
  double number = 0;
  void setBind(cppbind::Binder* binder, bool) {
    binder->bind("texts", texts, std::vector<std::string>());
    binder->bind("time", time, boost::posix_time::ptime());
    binder->bind("duration", duration, boost::posix_time::time_duration());
    binder->bind("number", number, 0.0);
  }
};

std::vector<std::pair<const char*, std::string>> hostileTexts() {
  // The parser allows a thousand levels.
  return {
      {"deep modules",
       nested(330, R"({"modules":[{"C":)", R"({"modules":[{"S":{}})", R"(,{"S":{}})", "]}", "}]}")},
      {"a deep error",
       nested(330, R"({"modules":[{"C":)", R"({"modules":[{"S":{"x":")", "x", R"("}}]})", "}]}")},
      {"named modules", filled(R"({"named_modules":{"":{"S":{}})", R"(,"":{"S":{}})", "}}")},
      {"deep rules", nested(490, R"({"rule_list":[)", R"({"A":{}})", R"(,{"A":{}})", "", "]}")},
      {"a deep unknown rule", nested(490, R"({"rule_list":[)", R"({")", "x", R"(":{}})", "]}")},
      {"a long text", filled(R"({"A":{"texts":[")", "\\u4e2d", R"("]}})")},
      {"a long time", filled(R"({"A":{"time":")", "2024-03-05 ", R"("}})")},
      {"a long duration", filled(R"({"A":{"duration":")", "9", R"("}})")},
      {"a long number", filled(R"({"A":{"number":)", "9", "}}")},
      {"comments", filled("[1", "/**/", "]")},
      {"errors", filled("[", "{x},", "]")},
      {"an unterminated text", filled("[\"", "\\\"")},
  };
}

class HostileFileTest : public InTemporaryDirectory {
 protected:
  HostileFileTest() {
    classes.regClass<ChainedModule>("C");
    classes.regClass<Step>("S");
    classes.regClass<Any>("A");
  }
  // An error is an exception, except that an invalid rule file ends the process.
  void expectQuickEnd(const char* name, const char* reader, const std::function<void()>& read) {
    const ChildResult child = runInChild([&] {
      limitProcessorTime(1);
      errorOf(read);
    });
    const bool isInvalidRuleFile =
        child.signal == SIGABRT && contains(child.errors, "BackTraceException");
    EXPECT_TRUE(child.exitCode == 0 || isInvalidRuleFile)
        << name << ' ' << reader << ' ' << child.signal << child.errors.substr(0, 1000);
  }

  ModuleLoader loader;
  cppbind::ClassRegister& classes = loader.classRegister();
};

TEST_F(HostileFileTest, AnExpensiveFileIsReadOrRefusedWithinASecond) {
  for (const auto& [name, text] : hostileTexts()) {
    writeFile(kFile, text);
    expectQuickEnd(name, "pipeline", [&] { ModuleExecutor(&classes, kFile, true); });
    expectQuickEnd(name, "named modules", [&] { loader.loadFile(kFile); });
    expectQuickEnd(name, "rules", [&] { RuleLoader::loadRules(kFile, &classes); });
    expectQuickEnd(name, "JSON", [&] { Str2Json(Json2Str(File2Json(kFile))); });
    expectQuickEnd(name, "text", [&, &text = text] {
      libvarrow::utility::fromUtf8(text);
      PrefixOnEachLine("  ", text);
      cppbind::BoostPTimeText::fromString(text);
    });
  }
}

}  // namespace
