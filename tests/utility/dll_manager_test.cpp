// Plug-ins, each test in a process of its own: what is loaded stays loaded.
#include "libvarrow/utility/DllManager.h"

#include <gtest/gtest.h>

#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/dll/shared_library.hpp>
#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <memory>

#include "libvarrow/log/log.h"
#include "libvarrow/utility/RegistersManager.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"
#include "support/errors.h"

namespace {

using libvarrow::DllManager;
using libvarrow::RegistersManager;
using test_support::errorOf;
using test_support::runInChild;

// Copies into the current directory and below, with a log that standard output shows.
class DllManagerTest : public test_support::InTemporaryDirectory {
 protected:
  static void provide(const char* plugin, const std::string& as) {
    boost::filesystem::copy_file(std::string(PLUGINS) + "/" + plugin + ".so", as);
  }
  static void logToOutput() {
    test_support::writeFile("log.conf",
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
    return (boost::filesystem::current_path() / file).string();
  }
};

TEST_F(DllManagerTest, APlugInIsStartedOnceWhateverItIsLoadedAs) {
  provide("good", "libdecorated.so");
  boost::filesystem::create_symlink("libdecorated.so", "other.so");
  const std::string output = run([&] {
    DllManager manager;
    const auto* loaded = manager.findOrCreateDll("decorated", at(""));
    std::cout << "ok\n"
              << loaded->is_loaded() << (loaded == manager.findDll("decorated"))
              << (loaded == manager.findOrCreateDll("decorated", "elsewhere"))
              << (manager.findDll("Decorated") == nullptr) << std::endl;
    DllManager another;
    another.autoLoad(".");
    std::cout << (another.findDll("other") == loaded && another.findDll("libdecorated") == loaded);
  });
  EXPECT_EQ(0u, output.find("INFO 开始加载动态库:decorated\ninitModule\n"
                            "INFO 成功加载动态库:decorated\nok\n1111\n"));
  EXPECT_EQ(output.find("initModule"), output.rfind("initModule"));
  EXPECT_EQ('1', output.back());
}

TEST_F(DllManagerTest, ADirectoryIsSearchedForExactlyTheLibrariesInIt) {
  boost::filesystem::create_directories("d.so");
  provide("good", "a.so");
  provide("good", "b.SO");
  provide("good", "d.so/inner.so");
  test_support::writeFile("c.txt", "text");
  const std::string output = run([] {
    DllManager manager;
    manager.autoLoad(".");
    manager.autoLoad(boost::filesystem::current_path().string());
    manager.autoLoad("a.so");
    manager.autoLoad("nowhere");
  });
  EXPECT_EQ("INFO 开始加载动态库:a\ninitModule\nINFO 成功加载动态库:a\n", output);
}

TEST_F(DllManagerTest, ARelativeDirectoryMayStandBesideTheProgramAndAFaultKeepsWhatIsLoaded) {
  // The directory of all test plug-ins, good ones and others.
  const std::string output = run([] {
    DllManager manager;
    std::cout << errorOf([&] { manager.autoLoad("plugins"); }) << std::endl;
    int loaded = 0;
    for (const char* name : {"good", "plain_function", "throwing", "without_entry"}) {
      loaded += manager.findDll(name) != nullptr;
    }
    std::cout << loaded << (manager.findDll("good") != nullptr) << std::endl;
  });
  EXPECT_EQ(std::string::npos, output.find("no error"));
  const bool isGoodFirst = output.find("initModule\n") != std::string::npos;
  EXPECT_NE(std::string::npos, output.find(isGoodFirst ? "\n11\n" : "\n00\n")) << output;
}

TEST_F(DllManagerTest, WhatIsNoPlugInSaysWhichFileAndWhyAndIsNotKept) {
  provide("without_entry", "without_entry.so");
  provide("throwing", "throwing.so");
  provide("plain_function", "plain_function.so");
  test_support::writeFile("text.so", "no library");
  boost::filesystem::create_directory("folder.so");
  const std::string output = run([&] {
    // The errors are read when the managers are gone.
    for (const char* name :
         {"gone", "text", "folder", "without_entry", "plain_function", "throwing", "throwing"}) {
      std::cout << name << ": " << errorOf([&, name] {
        DllManager manager;
        const auto notKept = [&] { return manager.findDll(name) == nullptr; };
        try {
          manager.findOrCreateDll(name, at(""));
        } catch (...) {
          std::cout << (notKept() ? "not kept, " : "kept, ");
          throw;
        }
      }) << std::endl;
    }
    std::cout << (RegistersManager::getRegister("plug-ins") == nullptr) << std::endl;
  });
  const auto expectText = [&](const std::string& text) {
    EXPECT_NE(std::string::npos, output.find(text)) << text << "\nin\n" << output;
  };
  expectText("not kept, shared library:" + at("gone.so") + " err:");
  expectText("No such file or directory");
  expectText("not kept, shared library:" + at("text.so") + " err:");
  expectText("file too short");
  expectText("not kept, shared library:" + at("folder.so") + " err:");
  expectText("ERROR shared library:" + at("without_entry.so") +
             " err:boost::dll::shared_library::get() failed");
  expectText("not kept, boost::dll::shared_library::get() failed");
  expectText("not kept, shared library:" + at("plain_function.so") +
             " err:initModule is no alias of a function!");
  expectText("ERROR shared library:" + at("throwing.so") + " err:");
  expectText("not kept, no licence\n1\n");
}

TEST_F(DllManagerTest, ThePlugInsClassesGoWithTheManagerAndItsCodeWhenNothingOfItIsAlive) {
  provide("good", "good.so");
  const auto isLoaded = [] {
    std::ifstream maps("/proc/self/maps");
    const std::string text{std::istreambuf_iterator<char>(maps), {}};
    return text.find("/good.so") != std::string::npos;
  };
  const auto create = [] {
    auto* reg = RegistersManager::getRegister("plug-ins");
    return std::unique_ptr<cppbind::Object>(reg->create("Greeter", Json::Value()));
  };
  const std::string inOrder = run([&] {
    auto manager = std::make_unique<DllManager>();
    manager->findOrCreateDll("good", at(""));
    create();
    manager.reset();
    std::cout << isLoaded() << (RegistersManager::getRegister("plug-ins") == nullptr) << std::endl;
  });
  EXPECT_NE(std::string::npos, inOrder.find("greeter gone\n01\n")) << inOrder;

  const std::string tooLate = run([&] {
    auto manager = std::make_unique<DllManager>();
    manager->findOrCreateDll("good", at(""));
    auto object = create();
    manager.reset();
    std::cout << isLoaded() << (RegistersManager::getRegister("plug-ins") == nullptr) << std::endl;
    object.reset();
  });
  EXPECT_NE(std::string::npos, tooLate.find("WARN shared library:" + at("good.so") +
                                            " stays loaded: 1 of its classes and objects are alive"
                                            "\n11\ngreeter gone\n"))
      << tooLate;
}

TEST_F(DllManagerTest, ErrorsOutliveTheManagerThatTheyFlyPast) {
  provide("good", "good.so");
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
  EXPECT_NE(std::string::npos, output.find("out of order\n")) << output;
  EXPECT_NE(std::string::npos, output.find("Faulty.own: should be true\n")) << output;
}

TEST_F(DllManagerTest, AManagerMayGoWithTheStaticObjectsOfAHost) {
  EXPECT_EQ(0, std::system(STATIC_MANAGER_HOST " " PLUGINS " > output.txt"));
  EXPECT_NE(std::string::npos, test_support::readFile("output.txt").find("main ends\n"));
}

}  // namespace
