#include "check/options.h"

#include "syshealth/host/arg_parser.h"

namespace check {

const char kSpecification[] =
    "Checks servers for a monitoring system, as its plug-in.\n"
    "  --ignore LIST           what does not count, commas between:\n"
    "                          categories, message ids, origins\n"
    "  --baseline FILE         compare the parts with those in a file\n"
    "  --save-baseline FILE    write that file, if all could be read\n"
    "  --node N                one node of a server with several; else\n"
    "                          every node\n"
    "exit: plug-in\n"
    "targets: many\n";

Options readOptions() {
  Options options;
  if (ArgParser* const parser = ArgParser::GetInstance()) {
    parser->GetValue("ignore", options.ignore);
    parser->GetValue("baseline", options.baseline);
    parser->GetValue("save-baseline", options.saveBaseline);
    options.oneNode = parser->GetValue("node");
  }
  return options;
}

}  // namespace check
