#include "suite/report/reader/node_report.h"

#include <gtest/gtest.h>

#include "suite/devhealth/failure_status.h"
#include "suite/report/json.h"
#include "syshealth/result/health_status.h"
#include "syshealth/result/result_codes.h"

namespace report {
namespace {

using base::FailureKind;
using devhealth::Unread;

Unread unread(FailureKind kind, int status,
              devhealth::Extent extent = devhealth::Extent::kItem) {
  return {{kind, "10.0.0.5:443", "/redfish/v1/X", "it broke", "mend it"},
          status,
          extent};
}

// Answers as the test says, and counts its calls.
class FakeInventory : public devhealth::Inventory {
 public:
  std::optional<Unread> connect() override { return std::nullopt; }
  std::optional<Unread> system(System& system) override {
    ++calls;
    if (!all) {
      system.name = "Maker 100";
    }
    return all;
  }
  std::optional<Unread> processors(
      std::vector<Processor>& processors) override {
    return answer(processors);
  }
  std::optional<Unread> fans(std::vector<Fan>& list) override {
    ++calls;
    if (!fan || fan->extent == devhealth::Extent::kParts) {
      list.resize(2);
    }
    return fan ? fan : all;
  }
  std::optional<Unread> memory(std::vector<MemoryModule>& modules) override {
    return answer(modules);
  }
  std::optional<Unread> powerSupplies(
      std::vector<PowerSupply>& supplies) override {
    return answer(supplies);
  }
  std::optional<Unread> pciAdapters(
      std::vector<PciAdapter>& adapters) override {
    return answer(adapters);
  }
  std::optional<Unread> events(std::vector<Event>& events) override {
    ++calls;
    if (!all) {
      events = active;
    }
    return all;
  }
  std::optional<std::size_t> memoryPlaces() override { return 4; }

  std::optional<Unread> all;  ///< Every call answers this.
  std::optional<Unread> fan;  ///< That of the fans does.
  std::vector<Event> active;
  int calls = 0;

 private:
  template <typename Part>
  std::optional<Unread> answer(std::vector<Part>& parts) {
    ++calls;
    if (!all) {
      parts.resize(1);
    }
    return all;
  }
};

ServerReport read(FakeInventory& inventory, std::uint32_t wants = kWantAll) {
  return readNode(inventory, wants, base::Clock::now());
}

Event event(Category category, Health severity) {
  Event event;
  event.category = category;
  event.severity = severity;
  return event;
}

TEST(ReadNode, AllOfItIsComplete) {
  FakeInventory inventory;
  const ServerReport report = read(inventory);
  EXPECT_EQ(report.read.status, ReadStatus::kComplete);
  EXPECT_TRUE(report.read.failures.empty());
  EXPECT_EQ(report.read.time.size(),
            std::string("2026-11-21T22:57:03Z").size());
  EXPECT_EQ(report.system.name, "Maker 100");
  EXPECT_EQ(report.processors->size(), 1);
  EXPECT_EQ(report.fans->size(), 2);
  EXPECT_EQ(report.memorySlots.total, 4);
  EXPECT_EQ(report.memorySlots.populated, 1);
  EXPECT_EQ(report.health.status, Health::kNormal);
}

TEST(ReadNode, WhatIsNotWantedIsNotRead) {
  FakeInventory inventory;
  const ServerReport report = read(inventory, kWantFans);
  EXPECT_EQ(inventory.calls, 1);
  EXPECT_EQ(report.read.status, ReadStatus::kComplete);
  EXPECT_TRUE(report.fans);
  EXPECT_FALSE(report.processors);
  EXPECT_FALSE(report.memorySlots.total);
  EXPECT_FALSE(report.health.events);
  EXPECT_EQ(report.health.status, Health::kUnknown);
}

TEST(ReadNode, AFailureOfOneItemIsPartial) {
  FakeInventory inventory;
  inventory.fan = unread(FailureKind::kServerError, devhealth::kStatusInternal);
  const ServerReport report = read(inventory);
  EXPECT_EQ(report.read.status, ReadStatus::kPartial);
  ASSERT_EQ(report.read.failures.size(), 1);
  const ReadFailure& failure = report.read.failures.front();
  EXPECT_EQ(failure.what, "fan");
  EXPECT_EQ(failure.resource, "/redfish/v1/X");
  EXPECT_EQ(failure.code, kResultBmcInternalError);
  EXPECT_EQ(failure.cause, "it broke; mend it");
  EXPECT_FALSE(report.fans);
  EXPECT_TRUE(report.pciAdapters);
}

TEST(ReadNode, APartThatCannotBeReadIsPartial) {
  FakeInventory inventory;
  inventory.fan = unread(FailureKind::kServerError, kHealthReadFailed,
                         devhealth::Extent::kParts);
  const ServerReport report = read(inventory, kWantFans);
  EXPECT_EQ(report.read.status, ReadStatus::kPartial);
  EXPECT_EQ(report.read.failures.at(0).what, "fan");
  EXPECT_EQ(report.fans->size(), 2);
}

TEST(ReadNode, WhatIsNotSupportedSaysSo) {
  FakeInventory inventory;
  inventory.fan = unread(FailureKind::kNoHostInterface, kHealthNotSupported);
  EXPECT_EQ(read(inventory).read.failures.at(0).code, kResultNotSupported);
}

TEST(ReadNode, AnUnreachableTargetIsAskedOnce) {
  FakeInventory inventory;
  inventory.all = unread(FailureKind::kAuthentication, kHealthRefused,
                         devhealth::Extent::kTarget);
  const ServerReport report = read(inventory);
  EXPECT_EQ(inventory.calls, 1);
  EXPECT_EQ(report.read.status, ReadStatus::kFailed);
  ASSERT_EQ(report.read.failures.size(), 1);
  EXPECT_EQ(report.read.failures[0].what, "");
  EXPECT_EQ(report.read.failures[0].code, kResultAuthenticationFailed);
  EXPECT_FALSE(report.processors);
}

TEST(ReadNode, WhenNothingCanBeReadItHasFailed) {
  FakeInventory inventory;
  inventory.all = unread(FailureKind::kServerError, devhealth::kStatusInternal);
  const ServerReport report = read(inventory);
  EXPECT_EQ(report.read.status, ReadStatus::kFailed);
  EXPECT_EQ(report.read.failures.size(), 7);
}

TEST(ReadNode, HealthIsTheWorstOfTheEvents) {
  FakeInventory inventory;
  inventory.active = {event(Category::kMemory, Health::kError),
                      event(Category::kMemory, Health::kWarning),
                      event(Category::kOther, Health::kWarning)};
  const HealthSummary health = read(inventory, kWantHealth).health;
  EXPECT_EQ(health.status, Health::kError);
  EXPECT_EQ(health.categories[static_cast<std::size_t>(Category::kMemory)],
            Health::kError);
  EXPECT_EQ(health.categories[static_cast<std::size_t>(Category::kOther)],
            Health::kWarning);
  EXPECT_EQ(health.categories[static_cast<std::size_t>(Category::kDisks)],
            Health::kNormal);
  EXPECT_EQ(health.events->size(), 3);
}

TEST(FailedReport, IsALineOfItsOwn) {
  const ServerReport report = failedReport(
      base::makeFailure(FailureKind::kCertificate, "it is self-signed"),
      base::Clock::now());
  EXPECT_EQ(report.read.status, ReadStatus::kFailed);
  EXPECT_EQ(report.read.failures.at(0).code, kResultCertificateNotVerified);
  EXPECT_EQ(report.health.status, Health::kUnknown);
}

TEST(FailedReport, AServiceWithoutSystemsIsNotSupported) {
  EXPECT_EQ(failedReport(base::makeFailure(FailureKind::kNoSystem, "none"),
                         base::Clock::now())
                .read.failures.at(0)
                .code,
            kResultNotSupported);
}

}  // namespace
}  // namespace report
