#include <boost/nowide/args.hpp>

#include "suite/brivel/brivel_main.h"

int main(int argc, char** argv) {
  // On Windows: the arguments as UTF-8, whatever the machine's code page.
  const boost::nowide::args utf8(argc, argv);
  return brivelMain(argc, argv);
}
