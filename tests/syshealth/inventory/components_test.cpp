#include "syshealth/inventory/components.h"

#include <gtest/gtest.h>

#include <string>

// The fields by position, so that the order that the tables of labels and
// properties rely on is part of the test.

namespace {

using Tarvex::DeviceHealth::DIMM;
using Tarvex::DeviceHealth::Fan;
using Tarvex::DeviceHealth::PCIAdapter;
using Tarvex::DeviceHealth::Power;
using Tarvex::DeviceHealth::Processor;
using Tarvex::DeviceHealth::SystemBoard;

TEST(Components, SystemBoardHasItsFieldsInOrder) {
  const SystemBoard board = {"1", "2", "3", "4"};
  EXPECT_EQ(board.machineName + board.machineTypeModel + board.serialNumber +
                board.uuid,
            "1234");
}

TEST(Components, ProcessorHasItsFieldsInOrder) {
  const Processor processor = {"1", "2", "3", "4", "5"};
  EXPECT_EQ(processor.name + processor.family + processor.currentClockSpeed +
                processor.maxClockSpeed + processor.healthState,
            "12345");
}

TEST(Components, FanHasItsFieldsInOrder) {
  const Fan fan = {"1", "2", "3"};
  EXPECT_EQ(fan.elementName + fan.desiredSpeed + fan.healthState, "123");
}

TEST(Components, DimmHasItsFieldsInOrder) {
  const DIMM dimm = {"1", "2", "3", "4", "5", "6"};
  EXPECT_EQ(dimm.description + dimm.partNumber + dimm.serialNumber +
                dimm.manufacturer + dimm.model + dimm.maxMemorySpeed,
            "123456");
}

TEST(Components, PowerHasItsFieldsInOrder) {
  const Power power = {"1", "2", "3"};
  EXPECT_EQ(power.elementName + power.totalOutputPower + power.healthState,
            "123");
}

TEST(Components, PciAdapterHasItsFieldsInOrder) {
  const PCIAdapter adapter = {"1", "2", "3", "4", "5", "6", "7", "8", "9"};
  EXPECT_EQ(adapter.description + adapter.tag + adapter.manufacturer +
                adapter.model + adapter.serialNumber + adapter.partNumber +
                adapter.sku + adapter.operationalStatus +
                adapter.statusDescriptions,
            "123456789");
}

}  // namespace
