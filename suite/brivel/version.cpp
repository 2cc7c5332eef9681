#include "suite/brivel/version.h"

#include <boost/version.hpp>

#include "suite/http/network_transport.h"

namespace brivel {
namespace {

std::string boostVersion() {
  return std::to_string(BOOST_VERSION / 100000) + "." +
         std::to_string(BOOST_VERSION / 100 % 1000) + "." +
         std::to_string(BOOST_VERSION % 100);
}

}  // namespace

std::string versionText() {
  return "brivel " BRIVEL_VERSION "\ncommit " BRIVEL_COMMIT "\nBoost " +
         boostVersion() + ", " + http::networkLibraries() + "\n";
}

}  // namespace brivel
