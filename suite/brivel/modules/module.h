#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "suite/base/result.h"
#include "syshealth/result/brivel_result.h"

namespace brivel {

/// The loaded library of an application. The destructor unloads it.
class Module {
 public:
  /// Loads a library and finds its three entry points. The cause of a
  /// failure names the file.
  static base::Result<Module> load(const std::filesystem::path& file);

  Module(Module&&) noexcept;
  ~Module();

  const std::filesystem::path& file() const;

  // The entry points. Exceptions of the library pass through.
  void init() const;
  std::int32_t paramRegister(std::int32_t command) const;
  BrivelResult appMain(std::int32_t command) const;

 private:
  struct Library;
  explicit Module(std::unique_ptr<Library> library);

  std::unique_ptr<Library> library_;
};

}  // namespace brivel
