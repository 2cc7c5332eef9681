#include "suite/brivel/application_run.h"

#include <exception>
#include <filesystem>

#include "suite/args/parser_scope.h"
#include "suite/brivel/module.h"
#include "suite/brivel/module_search.h"
#include "syshealth/host/log.h"
#include "syshealth/result/result_codes.h"

namespace brivel {
namespace {

// Lets a module register itself. Returns false and sets `error` if it does not
// register under the name of its file.
bool registerModule(const Module& module, const args::ParserScope& parser,
                    std::string& error) {
  module.init();
  const std::string name = module.file().stem().string();
  const std::vector<args::Registration>& known = parser.registrations();
  if (known.size() == 1 && known.front().name == name) {
    return true;
  }
  error = module.file().string() +
          (known.empty()
               ? " registers no application"
               : " registers the application '" + known.back().name + "'") +
          ", not '" + name + "'";
  return false;
}

RunResult runCommand(const Module& module, std::int32_t command) {
  RunResult result;
  result.code = module.paramRegister(command);
  if (result.code == kResultSuccess) {
    BrivelResult answer = module.appMain(command);
    result.code = answer.code;
    result.message = answer.message;
  }
  return result;
}

RunResult internalError(const std::string& what) {
  RunResult result;
  result.code = kResultInternalError;
  result.cause = "the application failed: " + what;
  Tarvex::Log(1, __FILE__, __LINE__).Stream() << result.cause;
  return result;
}

}  // namespace

std::optional<RunResult> runApplication(const CommandLine& line,
                                        std::string& error) {
  const auto file = findModule(moduleDirectory(), line.application, error);
  if (!file) {
    return std::nullopt;
  }
  // The parser outlives the module.
  const args::ParserScope parser(line.applicationOptions);
  const std::optional<Module> module = Module::load(*file, error);
  if (!module) {
    return std::nullopt;
  }
  // An exception must be caught while its module is still loaded.
  try {
    if (!registerModule(*module, parser, error)) {
      return std::nullopt;
    }
    return runCommand(*module, line.command);
  } catch (const std::exception& failure) {
    return internalError(failure.what());
  } catch (...) {
    return internalError("an exception of no known type");
  }
}

std::string listApplications(std::vector<std::string>& errors) {
  std::string list;
  const std::filesystem::path directory = moduleDirectory();
  const std::vector<std::filesystem::path> files = moduleFiles(directory);
  if (files.empty()) {
    errors.push_back("no applications in " + directory.string());
  }
  for (const std::filesystem::path& file : files) {
    const args::ParserScope parser((args::OptionValues()));
    std::string error;
    const std::optional<Module> module = Module::load(file, error);
    if (module && registerModule(*module, parser, error)) {
      const args::Registration& known = parser.registrations().front();
      list += known.name + "  " + std::to_string(known.appId) + "  " +
              file.string() + "\n";
    } else {
      errors.push_back(error);
    }
  }
  return list;
}

}  // namespace brivel
