#include "suite/local/cpu_frequency.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/suite/local/folder.h"

namespace local {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void addCpu(Folder& folder, int cpu, const std::string& package,
            const std::string& khz) {
  const std::string path = "/sys/devices/system/cpu/cpu" + std::to_string(cpu);
  folder.file(path + "/topology/physical_package_id", package);
  if (!khz.empty()) {
    folder.file(path + "/cpufreq/cpuinfo_max_freq", khz);
  }
}

TEST(PackageMaxMhz, TakesTheFastestCoreOfEachPackage) {
  Folder folder;
  addCpu(folder, 0, "0", "3200000");
  addCpu(folder, 1, "0", "3400000");
  addCpu(folder, 2, "1", "3100000");
  EXPECT_THAT(packageMaxMhz(folder.root()), ElementsAre(3400, 3100));
}

TEST(PackageMaxMhz, IsEmptyWhereAPackageDoesNotTell) {
  Folder folder;
  addCpu(folder, 0, "0", "3200000");
  addCpu(folder, 1, "1", "");
  EXPECT_THAT(packageMaxMhz(folder.root()), IsEmpty());
}

TEST(PackageMaxMhz, NonsenseIsNotTold) {
  for (const char* khz : {"-5", "0", "fast", "999999999999"}) {
    Folder folder;
    addCpu(folder, 0, "0", khz);
    EXPECT_THAT(packageMaxMhz(folder.root()), IsEmpty()) << khz;
  }
}

TEST(PackageMaxMhz, IsEmptyWithoutTheFolder) {
  const Folder folder;
  EXPECT_THAT(packageMaxMhz(folder.root()), IsEmpty());
}

}  // namespace
}  // namespace local
