#include "suite/brivel/modules/module.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

using brivel::Module;

// The error of a module that cannot be loaded.
std::string errorOf(const std::string& file) {
  const auto module = Module::load(file);
  EXPECT_FALSE(module) << file;
  return module ? "" : module.error().cause;
}

std::string broken(const std::string& name) {
  return std::string(BROKEN_MODULES) + "/" + name + ".so";
}

TEST(ModuleLoad, FindsTheEntryPoints) {
  const auto module = Module::load(SAMPLE_MODULE);
  ASSERT_TRUE(module) << module.error().cause;
  EXPECT_EQ(module->file(), SAMPLE_MODULE);
  module->init();
  EXPECT_EQ(module->paramRegister(1), 0);
}

TEST(ModuleLoad, MissingEntryPointIsNamed) {
  EXPECT_EQ(
      errorOf(broken("no_init")),
      broken("no_init") + " is no application: it has no entry point Init");
  EXPECT_EQ(errorOf(broken("no_param_register")),
            broken("no_param_register") +
                " is no application: it has no entry point ParamRegister");
  EXPECT_EQ(errorOf(broken("no_app_main")),
            broken("no_app_main") +
                " is no application: it has no entry point AppMain");
}

TEST(ModuleLoad, EmptyLibraryIsNoApplication) {
  EXPECT_EQ(errorOf(broken("empty")),
            broken("empty") + " is no application: it has no entry point Init");
}

TEST(ModuleLoad, MissingSymbolIsNamed) {
  const std::string error = errorOf(broken("unresolved"));
  EXPECT_EQ(error.rfind(broken("unresolved") + " cannot be loaded: ", 0), 0U)
      << error;
  EXPECT_NE(error.find("nowhere"), std::string::npos) << error;
}

TEST(ModuleLoad, WhatOthersMayWriteIsRefused) {
  const support::TempFolder directory;
  const std::string file = directory.at("sample.so");
  std::filesystem::copy_file(SAMPLE_MODULE, file);
  ASSERT_EQ(chmod(file.c_str(), 0757), 0);
  EXPECT_EQ(errorOf(file),
            file +
                " cannot be loaded: others may write to it; run: chmod "
                "go-w " +
                file);
  ASSERT_EQ(chmod(file.c_str(), 0755), 0);
  ASSERT_EQ(chmod(directory.path().c_str(), 0777), 0);
  EXPECT_EQ(errorOf(file), file +
                               " cannot be loaded: others may write to its "
                               "folder; run: chmod go-w " +
                               directory.path().string());
  ASSERT_EQ(chmod(directory.path().c_str(), 0755), 0);
  const auto module = Module::load(file);
  EXPECT_TRUE(module) << module.error().cause;
}

TEST(ModuleLoad, ModuleOfAnotherUserIsRefused) {
  const support::TempFolder directory;
  const std::string file = directory.at("sample.so");
  std::filesystem::copy_file(SAMPLE_MODULE, file);
  if (chown(file.c_str(), 1234, 1234) != 0) {
    GTEST_SKIP() << "only root can make files of other users";
  }
  EXPECT_EQ(errorOf(file), file +
                               " cannot be loaded: it belongs to another "
                               "user, who could change it");
  ASSERT_EQ(chown(file.c_str(), 0, 0), 0);
  ASSERT_EQ(chown(directory.path().c_str(), 1234, 1234), 0);
  EXPECT_EQ(errorOf(file), file +
                               " cannot be loaded: its folder belongs to "
                               "another user, who could change it");
}

TEST(ModuleLoad, ForeignFileIsTold) {
  const support::TempFolder directory;
  const std::string file = directory.write("a.so", "no library at all\n");
  EXPECT_EQ(errorOf(file), file + " cannot be loaded: it is no library");
}

TEST(ModuleLoad, MissingFileIsTold) {
  EXPECT_EQ(errorOf("/nonexistent/a.so"),
            "/nonexistent/a.so cannot be loaded: it cannot be read: No such "
            "file or directory");
}

}  // namespace
