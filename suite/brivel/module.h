#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "syshealth/result/brivel_result.h"

namespace brivel {

/// An application's library, loaded: unloaded when the object dies.
class Module {
 public:
  /// Loads a library and finds its three entry points. Nothing when that does
  /// not succeed, and the reason in `error`, with the file's name.
  static std::optional<Module> load(const std::filesystem::path& file,
                                    std::string& error);

  Module(Module&&) noexcept;
  ~Module();

  const std::filesystem::path& file() const;

  // The entry points. What the library throws passes through.
  void init() const;
  std::int32_t paramRegister(std::int32_t command) const;
  BrivelResult appMain(std::int32_t command) const;

 private:
  struct Library;
  explicit Module(std::unique_ptr<Library> library);

  std::unique_ptr<Library> library_;
};

}  // namespace brivel
