#include "suite/brivel/application.h"

#include <exception>
#include <filesystem>
#include <utility>

#include "suite/base/log.h"
#include "suite/brivel/modules/module_search.h"
#include "syshealth/result/result_codes.h"

namespace brivel {
namespace {

// Calls into a module. An exception must be caught while the module is loaded.
template <typename Call>
RunResult guarded(const Call& call) {
  std::string what = "an exception of no known type";
  try {
    return call();
  } catch (const base::Failure& failure) {
    // Thrown by the services of the run, through the module.
    RunResult ended;
    ended.code = kResultInterrupted;
    ended.ended = failure;
    return ended;
  } catch (const std::exception& failure) {
    what = failure.what();
  } catch (...) {
  }
  RunResult result;
  result.code = kResultInternalError;
  result.cause = "the application failed: " + what;
  BRIVEL_LOG(base::kLogError) << result.cause;
  return result;
}

// What is wrong with the name that a module registered; empty if nothing is.
std::string nameProblem(const std::vector<args::Registration>& registered,
                        const std::string& name) {
  if (registered.empty()) {
    return " registers no application, not '" + name + "'";
  }
  if (registered.size() == 1 && registered.front().name == name) {
    return "";
  }
  return " registers the application '" + registered.back().name + "', not '" +
         name + "'";
}

base::Failure unusable(std::string cause) {
  return base::makeFailure(base::FailureKind::kFileUnreadable,
                           std::move(cause));
}

base::Result<Module> loadModule(const std::filesystem::path& file,
                                const args::ParserScope& parser) {
  base::Result<Module> module = Module::load(file);
  if (!module) {
    return module;
  }
  const RunResult started = guarded([&] {
    module->init();
    return RunResult();
  });
  const std::string problem =
      started.code == 0
          ? nameProblem(parser.registrations(), file.stem().string())
          : " cannot be started: " + started.cause;
  if (!problem.empty()) {
    return unusable(file.string() + problem);
  }
  return module;
}

}  // namespace

base::Result<Application> Application::load(const std::string& name) {
  const auto file = findModule(moduleDirectory(), name);
  if (!file) {
    return file.error();
  }
  auto parser = std::make_unique<args::ParserScope>();
  auto module = loadModule(*file, *parser);
  if (!module) {
    return module.error();
  }
  return Application(std::move(parser), *std::move(module));
}

base::Result<Application> Application::loadFor(std::int32_t command,
                                               const std::string& name) {
  base::Result<Application> application = load(name);
  if (application) {
    std::string problem = application->registerOptions(command);
    if (!problem.empty()) {
      return unusable(std::move(problem));
    }
  }
  return application;
}

Application::Application(std::unique_ptr<args::ParserScope> parser,
                         Module module)
    : parser_(std::move(parser)), module_(std::move(module)) {}

std::string Application::registerOptions(std::int32_t command) {
  registered_ = guarded([&] {
    RunResult result;
    result.code = module_.paramRegister(command);
    return result;
  });
  const OptionList hosts = hostOptions();
  std::string problem = parser_->specificationError();
  for (const args::ApplicationOption& option : specification().options) {
    if (problem.empty() && findOption(hosts, option.name) != nullptr) {
      problem = "its option " + option.name + " is one of brivel's own";
    }
  }
  return problem.empty()
             ? ""
             : module_.file().string() + " cannot be used: " + problem;
}

const args::Specification& Application::specification() const {
  return parser_->registrations().front().specification;
}

OptionList Application::options() const {
  if (specification().summary.empty()) {
    return OptionList(std::begin(kItemOptions), std::end(kItemOptions));
  }
  OptionList options;
  for (const args::ApplicationOption& own : specification().options) {
    const ArgumentKind kind = own.argument.empty()  ? ArgumentKind::kFlag
                              : own.argument == "N" ? ArgumentKind::kInteger
                                                    : ArgumentKind::kAnyText;
    options.push_back({own.name, '\0', own.argument, kind, kLeastInteger,
                       kLargestInteger, OptionSection::kApplication, own.help});
  }
  if (specification().manyTargets) {
    options.insert(options.end(), std::begin(kFleetOptions),
                   std::end(kFleetOptions));
  }
  return options;
}

RunResult Application::run(std::int32_t command, args::OptionValues values) {
  if (registered_.code != kResultSuccess) {
    return registered_;
  }
  parser_->setValues(std::move(values));
  return guarded([&] {
    BrivelResult answer = module_.appMain(command);
    RunResult result;
    result.code = answer.code;
    result.answered = true;
    result.message = answer.message;
    return result;
  });
}

std::string Application::listLine() const {
  const args::Registration& registered = parser_->registrations().front();
  return registered.name + "  " + std::to_string(registered.appId) + "  " +
         module_.file().string();
}

std::string listApplications(std::vector<std::string>& errors) {
  std::string list;
  const std::filesystem::path directory = moduleDirectory();
  const std::vector<std::filesystem::path> files = moduleFiles(directory);
  if (files.empty()) {
    errors.push_back("no applications in " + directory.string());
  }
  for (const std::filesystem::path& file : files) {
    const auto application = Application::load(file.stem().string());
    if (application) {
      list += application->listLine() + "\n";
    } else {
      errors.push_back(application.error().cause);
    }
  }
  return list;
}

}  // namespace brivel
