#include "suite/brivel/finish_run.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#include "suite/brivel/console.h"
#include "suite/brivel/exit_status.h"
#include "suite/brivel/options/help.h"
#include "suite/log/log_file.h"
#include "suite/platform/interrupt.h"
#include "suite/platform/standard_streams.h"
#include "suite/platform/terminal.h"
#include "syshealth/result/result_codes.h"

namespace brivel {
namespace {

constexpr std::int32_t kMostPlugInStatus = 3;

// Whether an allocation has failed. What leaves a destructor may reach
// std::terminate before it counts as caught, and has no name there.
std::atomic<bool> memoryWasDenied{false};

int finishPlugIn(const RunResult& result) {
  if (platform::interrupted()) {
    return plugInUnknown("interrupted");
  }
  if (result.ended) {
    return plugInUnknown(describe(*result.ended));
  }
  return result.answered && result.code >= 0 && result.code <= kMostPlugInStatus
             ? static_cast<int>(result.code)
             : plugInUnknown(resultText(result));
}

// Of the program itself, which is no fault of the user.
int internalError(const std::string& what, bool plugIn) {
  const std::string text = "internal error: " + what;
  if (plugIn) {
    return plugInUnknown(text);
  }
  printError(text);
  return kResultInternalError;
}

}  // namespace

int runGuarded(const std::function<int()>& run, bool plugIn) {
  try {
    return run();
  } catch (const base::Failure& failure) {
    return internalError(describe(failure), plugIn);
  } catch (const std::exception& failure) {
    return internalError(failure.what(), plugIn);
  }
}

void endWithoutMemory() {
  std::set_new_handler([] {
    memoryWasDenied = true;
    throw std::bad_alloc();
  });
  std::set_terminate([] {
    const std::exception_ptr failure = std::current_exception();
    try {
      if (failure != nullptr) {
        std::rethrow_exception(failure);
      }
      if (memoryWasDenied && std::uncaught_exceptions() > 0) {
        throw std::bad_alloc();
      }
    } catch (const std::bad_alloc&) {
      std::fputs(
          "brivel: there is not enough memory; a session that the run opened "
          "stays open until it times out on the controller\n",
          stderr);
      std::_Exit(exitStatusOf(kResultInternalError));
    } catch (...) {
      // Our own mistake: as ever.
    }
    std::abort();
  });
}

int finishRun(RunResult result, const std::vector<std::string>& notices,
              bool plugIn) {
  const bool abandoned = platform::outputIsAbandoned();
  if (result.code == kResultSuccess && !platform::outputIsWhole()) {
    result.code = kResultWriteFileFailed;
    result.cause = "standard output cannot be written";
  }
  if (plugIn) {
    return finishPlugIn(result);
  }
  if (platform::interrupted()) {
    printError("interrupted");
    return kExitInterrupted;
  }
  if (result.ended) {
    printError(describe(*result.ended));
    return kExitUsage;
  }
  if (result.code == kResultSuccess) {
    for (const std::string& notice : notices) {
      printError("note: " + notice);
    }
  } else if (!abandoned) {
    std::cerr << (platform::isTerminal(platform::kStandardError)
                      ? resultLines(result, logging::logPath(),
                                    platform::terminalWidth(
                                        platform::kStandardError, kHelpWidth))
                      : resultLine(result, logging::logPath()) + "\n")
              << std::flush;
  }
  return exitStatusOf(result.code);
}

}  // namespace brivel
