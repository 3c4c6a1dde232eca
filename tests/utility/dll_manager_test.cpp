// Plug-ins, each test in a process of its own: what is loaded stays loaded.
#include "libvarrow/utility/DllManager.h"

#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/dll/shared_library.hpp>
#include <boost/filesystem/operations.hpp>
#include <iostream>
#include <memory>

#include "cppbind/cppbind.h"
#include "libvarrow/log/log.h"
#include "libvarrow/module/pipeline_check.h"
#include "libvarrow/module/pipeline_schema.h"
#include "libvarrow/utility/PlugInBuild.h"
#include "libvarrow/utility/RegistersManager.h"
#include "libvarrow/utility/UTFConverter.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using libvarrow::DllManager;
using libvarrow::RegistersManager;
using libvarrow::utility::fromUtf8;
using namespace test_support;

// Copies into the current directory and below, with a log that standard output shows.
class DllManagerTest : public InTemporaryDirectory {
 protected:
  static void provide(const std::string& plugin, const std::string& as) {
    boost::filesystem::copy_file(fileOf(PLUGINS "/" + plugin), fileOf(as));
  }
  static std::string fileOf(const std::string& library) {
    return library + boost::dll::shared_library::suffix().string();
  }
  static void logToOutput() {
    writeFile("log.conf",
              "log4cplus.rootLogger=INFO, C\n"
              "log4cplus.appender.C=log4cplus::ConsoleAppender\n"
              "log4cplus.appender.C.layout=log4cplus::PatternLayout\n"
              "log4cplus.appender.C.layout.ConversionPattern=%p %m%n\n");
    InitRootLogger("log.conf");
  }
  static std::string run(const std::function<void()>& body) {
    const auto child = runInChild([&] {
      logToOutput();
      body();
    });
    EXPECT_EQ(0, child.exitCode) << child.signal << child.errors;
    return child.output + child.errors;
  }
  static std::string at(const std::string& file) {
    return (boost::filesystem::current_path() / file).generic_string();
  }
};

TEST_F(DllManagerTest, APlugInLoadedUnderTwoNamesStartsOnce) {
  provide("good", "libdecorated");
  boost::system::error_code unsupported;
  boost::filesystem::create_symlink(fileOf("libdecorated"), fileOf("other"), unsupported);
  const std::string output = run([&] {
    DllManager manager;
    const auto* loaded = manager.findOrCreateDll("decorated", at(""));
    std::cout << "ok\n"
              << loaded->is_loaded() << (loaded == manager.findDll("decorated"))
              << (loaded == manager.findOrCreateDll("decorated", "elsewhere"))
              << (manager.findDll("Decorated") == nullptr) << std::endl;
    DllManager another;
    another.autoLoad(".");
    const bool isLinked = boost::filesystem::exists(fileOf("other"));
    std::cout << (another.findDll("other") == (isLinked ? loaded : nullptr) &&
                  another.findDll("libdecorated") == loaded);
  });
  EXPECT_EQ(0u, output.find(fromUtf8("INFO 开始加载动态库:decorated\ninitModule\n"
                                     "INFO 成功加载动态库:decorated\nok\n1111\n")));
  EXPECT_EQ(output.find("initModule"), output.rfind("initModule"));
  EXPECT_EQ('1', output.back());
}

TEST_F(DllManagerTest, ADirectoryIsSearchedForExactlyTheLibrariesInIt) {
  boost::filesystem::create_directories(fileOf("d"));
  provide("good", "a");
  boost::filesystem::copy_file(fileOf("a"), "b.SO");
  provide("good", fileOf("d") + "/inner");
  writeFile("c.txt", "text");
  const std::string output = run([] {
    DllManager manager;
    manager.autoLoad(".");
    manager.autoLoad(boost::filesystem::current_path().string());
    manager.autoLoad(fileOf("a"));
    manager.autoLoad("nowhere");
  });
  EXPECT_EQ(fromUtf8("INFO 开始加载动态库:a\ninitModule\nINFO 成功加载动态库:a\n"), output);
}

TEST_F(DllManagerTest, AFaultInADirectoryBesideTheProgramKeepsWhatIsLoaded) {
  // The directory of all test plug-ins, good ones and others.
  const std::string output = run([] {
    DllManager manager;
    std::cout << errorOf([&] { manager.autoLoad("plugins"); }) << '\n'
              << (manager.findDll("good") != nullptr) << std::endl;
  });
  EXPECT_EQ(std::string::npos, output.find("no error"));
  const bool isGoodFirst = output.find("initModule\n") != std::string::npos;
  EXPECT_TRUE(contains(output, isGoodFirst ? "\n1\n" : "\n0\n")) << output;
}

TEST_F(DllManagerTest, ACorrectedFileLoadsAfterARefusal) {
  boost::filesystem::create_directory(fileOf("folder"));
  const auto failure = [](const std::string& name) {
    return "threw shared library:" + at(fileOf(name)) + " err:";
  };
  const std::string self = ", this library is libvarrow " LIBVARROW_VERSION " (" LIBVARROW_ABI
                           "); build it again with the headers of this libvarrow!";
  const std::string notABuild = "libvarrowPlugInBuild is not a LIBVARROW_PLUG_IN_BUILD!";
  const std::pair<std::string, std::string> cases[] = {
      {"gone", failure("gone")},
      {"missing", errorOf([] { boost::dll::shared_library(at(fileOf("missing"))); })},
      {"folder", failure("folder")},
      {"incomplete", failure("incomplete")},
      {"without_entry", "err:boost::dll::shared_library::get() failed"},
      {"borrowing", "has no initModule of its own: the one found is that of "},
      {"plain_function",
       failure("plain_function") + "initModule is not a BOOST_DLL_ALIAS of a function!"},
      {"foreign_build", failure("foreign_build") + notABuild},
      {"thread_build", failure("thread_build") + notABuild},
      {"other_version", failure("other_version") +
                            "another major version: the plug-in was built against libvarrow 2.20.3 "
                            "(?[31m?)" +
                            self},
      {"other_abi", "_STD_CONFIG, JsonCpp " JSONCPP_VERSION_STRING ")" + self},
      {"throwing", "threw out of order"}};
  for (const auto& [name, text] : cases) {
    const std::string file = fileOf(name);
    const bool isBuilt = boost::filesystem::exists(PLUGINS "/" + file);
    if (isBuilt) provide(name, name);
    if (name == "borrowing" && !isBuilt) continue;  // functions are found in one library only
    const std::string output = run([&, plugin = name] {
      const auto load = [&](DllManager* manager) { manager->findOrCreateDll(plugin, at("")); };
      const auto print = [&](const std::string& error) {
        std::cout << "threw " << error << '\n'
                  << (RegistersManager::getRegister("plug-ins") == nullptr) << std::endl;
      };
      print(errorOf([&] { load(std::make_unique<DllManager>().get()); }));
      DllManager manager;
      print(errorOf([&] { load(&manager); }));
      boost::system::error_code inUse;
      boost::filesystem::remove(file, inUse);
      if (!inUse) provide("good", plugin);
      if (inUse) std::cout << "in use: " << inUse.message() << std::endl;
      print(errorOf([&] { load(&manager); }));
    });
    EXPECT_TRUE(contains(output, at(file)) && contains(output, text)) << text << "\nin\n" << output;
    EXPECT_NE(output.find(text), output.rfind(text)) << "again as at first: " << output;
    // The code of an entry that threw stays in the process, and under wine an incomplete library.
    const char* const end = name == "throwing"             ? "threw out of order\n1\n"
                            : contains(output, "in use: ") ? "!\n1\n"
                                                           : "threw no error\n0\n";
    EXPECT_TRUE(contains(output, end)) << output;
    EXPECT_EQ(contains(end, "error"), contains(output, "initModule\nINFO")) << output;
    EXPECT_EQ(output.find("initModule\n"), output.rfind("initModule\n")) << output;
  }
}

TEST_F(DllManagerTest, ClassesOfAPlugInAreCheckedAndDescribed) {
  provide("good", "good");
  const std::string output = run([&] {
    std::string schema, reference;
    {
      DllManager manager;
      manager.findOrCreateDll("good", at(""));
      const auto reg = RegistersManager::createRegister("plug-ins");
      const auto faults = libvarrow::checkPipelineText(R"({"modules": [{"Paint": {"coats": 4,
"modules": {"a": {"paint": {"coat": 1}}, "b": {"Greeter": {}}}}}]})",
                                                       *reg);
      for (const cppbind::Fault& fault : faults.first) std::cout << fault.text() << '\n';
      schema = cppbind::schemaText(libvarrow::pipelineSchema(*reg));
      reference = libvarrow::pipelineReference(*reg);
      std::cout << cppbind::descriptionFaults(*reg).size() << '\n';
    }
    std::cout << contains(schema, "\"maximum\": 3") << contains(schema, "class.Greeter")
              << contains(reference, "How often.");
  });
  EXPECT_TRUE(contains(
      output,
      "1:34: error: modules[0].Paint.coats: 4 is more than 3\n"
      "2:29: error: modules[0].Paint.modules.a.paint.coats: not found; did you mean \"coats\"?\n"
      "2:48: error: modules[0].Paint.modules.b: Greeter miss register\n"
      "1\n101"))
      << output;
}

TEST_F(DllManagerTest, AClassNameThatIsTakenNamesThePlugIn) {
  provide("good", "good");
  provide("good", "again");
  const std::string name = "class name early of (anonymous namespace)::Greeter of ";
  expectAbort(name + at(fileOf("again")) + " is taken by", [] {
    DllManager manager;
    manager.findOrCreateDll("good", at(""));
    manager.findOrCreateDll("again", at(""));
  });
}

TEST_F(DllManagerTest, AnUnusedPlugInIsUnloaded) {
  provide("good", "good");
  provide("throwing", "libgood");  // second choice
  for (const bool isInOrder : {true, false}) {
    const std::string output = run([&] {
      auto manager = std::make_unique<DllManager>();
      manager->findOrCreateDll("good", at(""));
      auto* reg = RegistersManager::getRegister("plug-ins");
      std::unique_ptr<cppbind::Object> object(reg->create("Greeter", Json::Value()));
      if (isInOrder) object.reset();
      manager.reset();
      std::cout << isLibraryLoaded(at(fileOf("good")))
                << (RegistersManager::getRegister("plug-ins") == nullptr) << std::endl;
    });
    EXPECT_TRUE(contains(output, isInOrder ? std::string("greeter gone\n01\n")
                                           : "WARN shared library:" + at(fileOf("good")) +
                                                 " stays loaded: 1 of its classes and objects are "
                                                 "alive\n11\ngreeter gone\n"))
        << output;
  }
}

TEST_F(DllManagerTest, AnExceptionInFlightKeepsThePlugInLoaded) {
  provide("good", "good");
  const std::string output = run([&] {
    for (const bool isOwn : {true, false}) {
      std::cout << errorOf([&] {
        DllManager manager;
        manager.findOrCreateDll("good", at(""));
        Json::Value fields;
        fields["own"] = isOwn;
        RegistersManager::getRegister("plug-ins")->create("Faulty", fields);
      }) << std::endl;
    }
  });
  EXPECT_TRUE(contains(output, "WARN shared library:" + at(fileOf("good")) +
                                   " stays loaded: an exception in flight may be of its types\n"
                                   "out of order\n"))
      << output;
  EXPECT_TRUE(contains(output, "Faulty.own: should be true\n")) << output;
}

}  // namespace
