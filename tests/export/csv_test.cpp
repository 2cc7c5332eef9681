#include "export/csv.h"

#include <gtest/gtest.h>

#include "tests/suite/report/sample_report.h"

namespace exporting {
namespace {

using report::fullReport;
using report::ServerReport;

TEST(CsvHeader, NamesTheColumnsAsJsonDoes) {
  EXPECT_EQ(csvHeader(report::kWantSystem),
            "target,node,name,type_model,serial_number,uuid,power_state,"
            "firmware_version,controller_firmware_version\r\n");
  EXPECT_EQ(csvHeader(report::kWantProcessors),
            "target,node,id,name,model,cores,threads,speed_mhz,max_speed_mhz,"
            "health,state\r\n");
  EXPECT_EQ(csvHeader(report::kWantFans),
            "target,node,id,name,speed_rpm,speed_percent,health,state\r\n");
  EXPECT_EQ(csvHeader(report::kWantMemory),
            "target,node,id,slot,capacity_mib,type,max_speed_mhz,"
            "max_speed_mts,manufacturer,part_number,serial_number,health,"
            "state\r\n");
  EXPECT_EQ(csvHeader(report::kWantPowerSupplies),
            "target,node,id,name,capacity_watts,manufacturer,model,"
            "part_number,serial_number,health,state\r\n");
  EXPECT_EQ(csvHeader(report::kWantPciAdapters),
            "target,node,id,name,tag,slot,manufacturer,model,serial_number,"
            "part_number,sku,health,state\r\n");
  EXPECT_EQ(csvHeader(report::kWantHealth),
            "target,node,category,severity,message_id,message,origin,time"
            "\r\n");
}

TEST(CsvRows, WriteEveryField) {
  const ServerReport full = fullReport();
  EXPECT_EQ(csvRows(report::kWantSystem, full),
            "rack1-n3,1,Maker 100,8Z50,SN1,0000-1,on,2.10,4.20\r\n");
  EXPECT_EQ(csvRows(report::kWantProcessors, full),
            "rack1-n3,1,/p/1,CPU 1,Model 9,8,16,2400.5,3500,normal,enabled"
            "\r\n");
  EXPECT_EQ(csvRows(report::kWantFans, full),
            "rack1-n3,1,/f/1,Fan 1,6480,45,normal,enabled\r\n");
  EXPECT_EQ(csvRows(report::kWantMemory, full),
            "rack1-n3,1,/m/1,DIMM 1,16384,DDR5,4800,5600,Maker,PN1,SN2,error,"
            "degraded\r\n");
  EXPECT_EQ(csvRows(report::kWantPowerSupplies, full),
            "rack1-n3,1,/s/1,PSU 1,1600,Maker,P1600,PN2,SN3,normal,"
            "standby_spare\r\n");
  EXPECT_EQ(csvRows(report::kWantPciAdapters, full),
            "rack1-n3,1,/c/1,Card 1,c1,Slot 1,Maker,C-9,SN4,PN3,SKU1,normal,"
            "enabled\r\n");
  EXPECT_EQ(csvRows(report::kWantHealth, full),
            "rack1-n3,1,memory,warning,M.1.0.Hot,It is hot.,"
            "/redfish/v1/Systems/1/Memory/1,2026-11-21T20:00:00Z\r\n");
}

TEST(CsvRows, QuoteWhatWouldEndACell) {
  ServerReport report;
  report.target.name = "a,b";
  report.fans = {{}, {}};
  report.fans->at(0).id = "say \"1\"";
  report.fans->at(1).id = "two\r\nlines";
  EXPECT_EQ(csvRows(report::kWantFans, report),
            "\"a,b\",1,\"say \"\"1\"\"\",,,,unknown,unknown\r\n"
            "\"a,b\",1,\"two\r\nlines\",,,,unknown,unknown\r\n");
}

TEST(CsvRows, AreNoneOfWhatWasNotRead) {
  ServerReport report = fullReport();
  report.fans = std::nullopt;
  report.memory.emplace();
  EXPECT_EQ(csvRows(report::kWantFans, report), "");
  report.memory->clear();
  EXPECT_EQ(csvRows(report::kWantMemory, report), "");
  report.read.status = report::ReadStatus::kFailed;
  EXPECT_EQ(csvRows(report::kWantSystem, report), "");
}

}  // namespace
}  // namespace exporting
