#include "suite/brivel/help.h"

#include "suite/brivel/user_paths.h"

namespace brivel {
namespace {

// clang-format off
constexpr const char* kUsage =
R"(brivel - health and hardware inventory of a server, on the console

Usage: brivel [options] APPLICATION [COMMAND] [application options]

Examples:
  brivel syshealth                                   health of this server
  brivel syshealth --device all --node 2             tables of its second node
  brivel --bmc admin@10.0.0.5 syshealth              ask a management controller
  brivel --bmc rack1-n3 syshealth --device dimm,fan  a target from the settings
  brivel --bmc file:samples/rack-server syshealth    a recorded server
  brivel applications                                the applications there are

Commands: show (the default), set; a number is taken as it is.

The application syshealth, without --device, shows the state of eight categories
and the active events. Its options:
      --device LIST         show tables instead: system, processor, fan, dimm,
                            power, pci_adapter, several with commas between, or
                            all for the six
      --node N              on this server: only its node N, counted from 1

Target (without one: this server itself):
  -H, --bmc TARGET          a management controller: a name from the settings,
                            [https://][user@]host[:port], or file:DIR for a
                            recorded server
      --esxi HOST           a VMware ESXi host (not supported by syshealth)
      --local-root FOLDER   a recorded machine, in the place of this server's
                            own parts; for tests and support

Login:
  -u, --user NAME           user at the target
      --password-file FILE  file with the password in its first line; only you
                            may be able to read it
      --password-stdin      the password is the first line of standard input
  Else the environment's BRIVEL_PASSWORD, the settings' password-file, or you
  are asked. A password is not taken from the command line, where every user of
  the machine would see it.

Trust (by default the certificate must be good, and from an authority that
this machine trusts):
      --cacert FILE         authorities to trust instead, PEM
      --pin sha256//DIGEST  trust the server that has this public key
  -k, --insecure            trust any certificate; warns on every run

Limits:
      --timeout SECONDS     one request (default 30)
      --deadline SECONDS    the whole run (default 120)
      --max-connections N   requests in flight, 1 to 16 (default 4)
      --thorough            read every part for the health summary, also where
                            the server says that all is well

Settings and log:
)";

constexpr const char* kRest =
R"(      --log-level 0..4      0 nothing, 1 errors, 3 information (the default),
                            4 everything
      --stats               what the run cost, on standard error

  -h, --help                this text
      --version             the version

Exit status: 0 success; 1 to 63 the result code; 64 any other result; 2 wrong
usage; 3 no such application, or it cannot be loaded; 130 interrupted.
)";
// clang-format on

}  // namespace

std::string helpText() { return std::string(kUsage) + placesHelp() + kRest; }

const char* versionText() { return "brivel " BRIVEL_VERSION "\n"; }

}  // namespace brivel
