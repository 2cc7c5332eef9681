#include "suite/brivel/modules/module.h"

#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/dll/shared_library.hpp>
#include <system_error>
#include <utility>

#include "suite/brivel/modules/library_file.h"
#include "suite/platform/files/trust.h"
#include "suite/platform/library_search.h"

namespace brivel {

struct Module::Library {
  std::filesystem::path file;
  boost::dll::shared_library handle;
  void (*init)() = nullptr;
  std::int32_t (*paramRegister)(std::int32_t command) = nullptr;
  BrivelResult (*appMain)(std::int32_t command) = nullptr;
};

namespace {

// The address of an entry point, by its plain name; null when it is missing.
template <typename Function>
Function* entryPoint(const boost::dll::shared_library& library,
                     const char* name) {
  return library.has(name) ? &library.get<Function>(name) : nullptr;
}

base::Failure refused(std::string cause) {
  return base::makeFailure(base::FailureKind::kFileUnreadable,
                           std::move(cause));
}

}  // namespace

base::Result<Module> Module::load(const std::filesystem::path& file) {
  const std::string name = file.string();
  // What others may write to is not even read.
  std::string problem = platform::problemWithCode(
      file, boost::dll::this_line_location().native());
  if (problem.empty()) {
    problem = problemWithLibrary(name);
  }
  if (!problem.empty()) {
    return refused(name + " cannot be loaded: " + problem);
  }
  auto library = std::make_unique<Library>();
  library->file = file;
  std::error_code failure;
  // All symbols are looked up at once: a library that lacks one is refused
  // here, and not in the middle of a run.
  library->handle.load(file, failure,
                       boost::dll::load_mode::rtld_now |
                           boost::dll::load_mode::rtld_local |
                           static_cast<boost::dll::load_mode::type>(
                               platform::librarySearchFlags()));
  if (failure) {
    return refused(name + " cannot be loaded: " + loadError(failure));
  }
  library->init = entryPoint<void()>(library->handle, "Init");
  library->paramRegister =
      entryPoint<std::int32_t(std::int32_t)>(library->handle, "ParamRegister");
  library->appMain =
      entryPoint<BrivelResult(std::int32_t)>(library->handle, "AppMain");
  const char* const missing = library->init == nullptr ? "Init"
                              : library->paramRegister == nullptr
                                  ? "ParamRegister"
                              : library->appMain == nullptr ? "AppMain"
                                                            : nullptr;
  if (missing != nullptr) {
    return refused(name + " is no application: it has no entry point " +
                   missing);
  }
  return Module(std::move(library));
}

Module::Module(std::unique_ptr<Library> library)
    : library_(std::move(library)) {}

Module::Module(Module&&) noexcept = default;

Module::~Module() = default;

const std::filesystem::path& Module::file() const { return library_->file; }

void Module::init() const { library_->init(); }

std::int32_t Module::paramRegister(std::int32_t command) const {
  return library_->paramRegister(command);
}

BrivelResult Module::appMain(std::int32_t command) const {
  return library_->appMain(command);
}

}  // namespace brivel
