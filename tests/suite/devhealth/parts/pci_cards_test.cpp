// Which rows the PCI table has: devices, the parts that are none of them, and
// what makes a part be a device.
#include "suite/devhealth/parts/pci/pci_cards.h"

#include <gtest/gtest.h>

#include "tests/suite/devhealth/server.h"
#include "tests/suite/graph_of.h"

namespace devhealth {
namespace {

using Members = std::vector<std::pair<std::string, std::string>>;
using Texts = std::vector<std::string>;

std::vector<PciCard> cardsOf(const Server& server) {
  ReadTally tally;
  auto cards = pciCards(server.graph(), server.node(), tally);
  EXPECT_FALSE(tally.verdict().has_value());
  return cards;
}

Texts cardNames(const Server& server) {
  Texts found;
  for (const PciCard& card : cardsOf(server)) {
    found.push_back(card.name);
  }
  return found;
}

Server cardsWithDevices(const Members& devices) {
  Server server;
  server.members("Chassis/1", "PCIeDevices", devices);
  return server;
}

Server withAdapters(const Members& devices, const Members& adapters) {
  Server server = cardsWithDevices(devices);
  server.members("Chassis/1", "NetworkAdapters", adapters);
  return server;
}

// A server with one storage that lists controllers in an array.
Server withControllers(const Members& devices, const std::string& controllers,
                       const std::string& storageId = "S0") {
  Server server = cardsWithDevices(devices);
  server.members(
      "Systems/1", "Storage",
      {{"S", R"({"Id": ")" + storageId + R"(", "StorageControllers": [)" +
                 controllers + "]}"}});
  return server;
}

std::string serviceLabel(const std::string& text) {
  return R"("Location": {"PartLocation": {"ServiceLabel": ")" + text + R"("}})";
}

// Lists of makers.

constexpr const char* kDevices =
    R"({"Oem": {"Odd": 7, "Kestwyn": {"Links": {"Devices":
        {"@odata.id": "/redfish/v1/Chassis/1/Devices"}}}}})";

Server withMakersList(const Members& devices) {
  Server server("{}", kDevices);
  std::string list;
  for (const auto& [name, text] : devices) {
    list += (list.empty() ? "" : ", ") + linkTo("Chassis/1/Devices/" + name);
    server.put("Chassis/1/Devices/" + name, text);
  }
  server.put("Chassis/1/Devices", R"({"Members": [)" + list + "]}");
  return server;
}

TEST(MakersDevices, StandInWhereTheChassisListsNone) {
  const Server server = withMakersList(
      {{"1", R"({"Id": "1", "Name": "Fabric Card", "Location": "Slot 2",
                 "Manufacturer": "Kestwyn", "SerialNumber": "K7",
                 "ProductPartNumber": "KF-2"})"},
       {"2", R"({"Name": "Cell", "DeviceType": "Controller Battery"})"},
       {"3", R"({"Name": "Slot", "Status": {"State": "Absent"}})"}});
  const auto cards = cardsOf(server);
  ASSERT_EQ(cards.size(), 1U);
  EXPECT_EQ(cards[0].name, "Fabric Card");
  EXPECT_EQ(cards[0].fields.model, "KF-2");
  EXPECT_EQ(cards[0].fields.partNumber, "KF-2");
  EXPECT_EQ(cards[0].fields.serialNumber, "K7");
}

TEST(MakersDevices, RepeatedNamesAreToldByTheirSlots) {
  EXPECT_EQ(cardNames(withMakersList(
                {{"9", R"({"Name": "Nine 40G", "Location": "Slot 1"})"},
                 {"10", R"({"Name": "Nine 40G", "Location": "Slot 2"})"}})),
            (Texts{"Slot 1 Nine 40G", "Slot 2 Nine 40G"}));
}

TEST(MakersDevices, StandInForAnEmptyAndAnUnreadableCollection) {
  for (const std::string& collection :
       {std::string(R"({"Members": []})"), std::string(kMissing),
        std::string(kBroken)}) {
    Server server = withMakersList({{"1", R"({"Name": "Card"})"}});
    server.linked("Chassis/1", "PCIeDevices", collection);
    EXPECT_EQ(cardNames(server), (Texts{"Card"})) << collection;
  }
}

TEST(MakersDevices, GiveWayToTheCollection) {
  Server server = withMakersList({{"1", R"({"Name": "Card"})"}});
  server.members("Chassis/1", "PCIeDevices", {{"1", R"({"Name": "Device"})"}});
  EXPECT_EQ(cardNames(server), (Texts{"Device"}));
}

TEST(MakersDevices, ListThatWasNotReadIsNone) {
  EXPECT_EQ(cardNames(Server("{}", kDevices)), Texts{});
}

TEST(MakersDevices, ListThatCannotBeReadFailsTheTable) {
  Server server("{}", kDevices);
  server.put("Chassis/1/Devices", kBroken);
  ReadTally tally;
  pciCards(server.graph(), server.node(), tally);
  EXPECT_TRUE(tally.verdict().has_value());
}

// Parts that no list of devices names.

TEST(LoneParts, AcceleratorsAreRows) {
  Server server;
  server.members(
      "Systems/1", "Processors",
      {{"CPU_0", R"({"ProcessorType": "CPU", "Name": "Nine"})"},
       {"1", R"({"ProcessorType": "GPU", "Name": "Processor", "Id": "7",
                 "Model": "G1", "Manufacturer": "Orlen", "SKU": "F"})"},
       {"2", R"({"ProcessorType": "FPGA", "Name": "Processor", "Id": "8"})"},
       {"3", R"({"ProcessorType": "Accelerator", "Name": "Cruncher",
                 "SparePartNumber": "X"})"},
       {"4", R"({"ProcessorType": "Core"})"},
       {"5", R"({"ProcessorType": "Thread"})"},
       {"6", R"({"ProcessorType": "Partition"})"},
       {"9", R"({"ProcessorType": "GPU", "Status": {"State": "Absent"}})"}});
  const auto cards = cardsOf(server);
  EXPECT_EQ(cardNames(server), (Texts{"Cruncher", "FPGA 8", "GPU 7"}));
  EXPECT_EQ(cards[2].fields.model, "G1");
  EXPECT_EQ(cards[2].fields.sku, "F");
  EXPECT_EQ(cards[0].fields.sku, "");
}

TEST(LoneParts, StorageControllersOfTheArrayAreRows) {
  const Server server =
      withControllers({}, R"({"MemberId": "0", "Name": "Raid One",
                              "Model": "R1", "SerialNumber": "S"},
                             {"MemberId": "1", "Name": "Raid Two"},
                             {"MemberId": "2", "Name": "Storage Controller"},
                             {"MemberId": "3", "Name": "Raid Three",
                              "Status": {"State": "Absent"}})");
  const auto cards = cardsOf(server);
  EXPECT_EQ(cardNames(server), (Texts{"Raid One", "Raid Two"}));
  EXPECT_EQ(pciTagOf(cards[0].part), "S0/0");
}

TEST(LoneParts, OnlyControllerHasTheTagOfItsStorage) {
  const Server server =
      withControllers({}, R"({"MemberId": "0", "Name": "Raid One"})");
  const auto cards = cardsOf(server);
  ASSERT_EQ(cards.size(), 1U);
  EXPECT_EQ(pciTagOf(cards[0].part), "S0");
}

TEST(LoneParts, ControllersOfTheCollectionStandInForTheArray) {
  for (const std::string array : {"", R"("StorageControllers": [])"}) {
    Server server;
    server.members("Systems/1", "Storage", {{"S", "{" + array + "}"}});
    server.members("Systems/1/Storage/S", "Controllers",
                   {{"C", R"({"Id": "C", "Name": "Raid One"})"}});
    const auto cards = cardsOf(server);
    ASSERT_EQ(cards.size(), 1U);
    EXPECT_EQ(cards[0].name, "Raid One");
    EXPECT_EQ(pciTagOf(cards[0].part), "C");
  }
}

TEST(LoneParts, AdaptersBehindInterfacesStandInForThoseOfTheChassis) {
  Server server;
  server.members(
      "Systems/1", "NetworkInterfaces",
      {{"1", R"({"Links": {"NetworkAdapter": )" + linkTo("A/1") + "}}"},
       {"2", R"({"NetworkAdapter": )" + linkTo("A/2") + "}"},
       {"3", R"({"NetworkAdapter": )" + linkTo("A/1") + "}"}});
  server.put("A/1", R"({"Name": "Left Port"})");
  server.put("A/2", R"({"Name": "Right Port"})");
  EXPECT_EQ(cardNames(server), (Texts{"Left Port", "Right Port"}));
  server.members("Chassis/1", "NetworkAdapters", {{"1", R"({"Name": "Own"})"}});
  EXPECT_EQ(cardNames(server), (Texts{"Own"}));
}

TEST(LoneParts, ListsThatWereNotReadFailTheTable) {
  for (const std::string list :
       {"Storage", "Processors", "NetworkInterfaces"}) {
    Server server;
    server.link("Systems/1", list);
    ReadTally tally;
    pciCards(server.graph(), server.node(), tally);
    EXPECT_TRUE(tally.verdict().has_value()) << list;
  }
}

TEST(LoneParts, ListsThatCannotBeReadFailTheTable) {
  for (const std::string list :
       {"Storage", "Processors", "NetworkInterfaces"}) {
    Server server;
    server.linked("Systems/1", list, kBroken);
    ReadTally tally;
    pciCards(server.graph(), server.node(), tally);
    EXPECT_TRUE(tally.verdict().has_value()) << list;
  }
}

TEST(LoneParts, NeverJoinWithEachOther) {
  EXPECT_EQ(
      cardNames(withAdapters({}, {{"1", R"({"Name": "F0", "SerialNumber": "S",
                               "PartNumber": "P"})"},
                                  {"2", R"({"Name": "F1", "SerialNumber": "S",
                               "PartNumber": "P"})"}})),
      (Texts{"F0", "F1"}));
}

TEST(LoneParts, FillOnlyTheEmptyFieldsOfTheirDevice) {
  const auto cards = cardsOf(withAdapters(
      {{"D", R"({"Name": "Card", "SerialNumber": "S", "Model": "M1"})"}},
      {{"N", R"({"Name": "Port", "SerialNumber": "S", "Model": "M2",
                 "Manufacturer": "Kestwyn", "PartNumber": "P", "SKU": "F"})"}}));
  ASSERT_EQ(cards.size(), 1U);
  EXPECT_EQ(cards[0].name, "Card");
  EXPECT_EQ(cards[0].fields.model, "M1");
  EXPECT_EQ(cards[0].fields.manufacturer, "Kestwyn");
  EXPECT_EQ(cards[0].fields.partNumber, "P");
  EXPECT_EQ(cards[0].fields.sku, "F");
}

// What makes a part be a device, in the order of the steps.

TEST(MatchDevices, LinkBelowADeviceIsOne) {
  for (const std::string& links :
       {R"("Links": {"PCIeDevice": )" + linkTo("Chassis/1/PCIeDevices/D") + "}",
        R"("Links": {"PCIeFunctions": [)" +
            linkTo("Chassis/1/PCIeDevices/D/PCIeFunctions/1") + "]}",
        R"("Controllers": [{"Links": {"PCIeDevices": [)" +
            linkTo("Chassis/1/PCIeDevices/D") + "]}}]"}) {
    EXPECT_EQ(
        cardNames(withAdapters({{"D", R"({"Name": "Card"})"}},
                               {{"N", R"({"Name": "Port", )" + links + "}"}})),
        (Texts{"Card"}))
        << links;
  }
}

TEST(MatchDevices, LinkOfAProcessorOrControllerCounts) {
  Server server = withControllers(
      {{"D", R"({"Name": "Card"})"}, {"E", R"({"Name": "Raid Card"})"}},
      R"({"Name": "Raid", "Links": {"PCIeFunctions": [)" +
          linkTo("Chassis/1/PCIeDevices/E/PCIeFunctions/1") + "]}}");
  server.members("Systems/1", "Processors",
                 {{"G", R"({"ProcessorType": "GPU", "Name": "Cruncher",
                     "Links": {"PCIeDevice": )" +
                            linkTo("Chassis/1/PCIeDevices/D") + "}}"}});
  EXPECT_EQ(cardNames(server), (Texts{"Card", "Raid Card"}));
}

TEST(MatchDevices, SameSerialNumberIsEnough) {
  EXPECT_EQ(cardNames(withAdapters({{"D", R"({"Name": "Card",
                                          "SerialNumber": "S"})"}},
                                   {{"N", R"({"Name": "Port",
                                          "SerialNumber": "S"})"}})),
            (Texts{"Card"}));
}

TEST(MatchDevices, PlaceholderIsNoSerialNumber) {
  EXPECT_EQ(cardNames(withAdapters({{"D", R"({"Name": "Card",
                                          "SerialNumber": "N/A"})"}},
                                   {{"N", R"({"Name": "Port",
                                          "SerialNumber": "N/A"})"}})),
            (Texts{"Card", "Port"}));
}

TEST(MatchDevices, PartNumberTellsDevicesOfOneSerialNumberApart) {
  const auto cards = cardsOf(withAdapters(
      {{"1", R"({"Name": "A", "SerialNumber": "S", "PartNumber": "P1"})"},
       {"2", R"({"Name": "B", "SerialNumber": "S", "PartNumber": "P2"})"}},
      {{"N", R"({"Name": "Port", "SerialNumber": "S", "PartNumber": "P2",
                 "Model": "M"})"}}));
  ASSERT_EQ(cards.size(), 2U);
  EXPECT_EQ(cards[0].fields.model, "");
  EXPECT_EQ(cards[1].fields.model, "M");
}

TEST(MatchDevices, DevicesOfOneSerialNumberAreTakenInTurn) {
  const auto cards = cardsOf(withAdapters(
      {{"1", R"({"Name": "A", "SerialNumber": "S"})"},
       {"2", R"({"Name": "B", "SerialNumber": "S"})"}},
      {{"N1", R"({"Name": "X", "SerialNumber": "S", "Model": "M1"})"},
       {"N2", R"({"Name": "Y", "SerialNumber": "S", "Model": "M2"})"},
       {"N3", R"({"Name": "Z", "SerialNumber": "S", "SKU": "F"})"}}));
  ASSERT_EQ(cards.size(), 2U);
  EXPECT_EQ(cards[0].fields.model, "M1");
  EXPECT_EQ(cards[1].fields.model, "M2");
  EXPECT_EQ(cards[0].fields.sku, "F");
}

TEST(MatchDevices, SlotOfAnAdapterIsTheDeviceInIt) {
  const std::string device = R"({"Id": "MEZZ", "Name": "Card", "Slot": {)" +
                             serviceLabel("Riser 2") + "}}";
  for (const std::string& place :
       {serviceLabel("Slot=MEZZ"), serviceLabel("Bay:MEZZ"),
        serviceLabel("Riser 2"),
        R"("Controllers": [{)" + serviceLabel("MEZZ") + "}]"}) {
    EXPECT_EQ(
        cardNames(withAdapters({{"1", device}},
                               {{"N", R"({"Name": "Port", )" + place + "}"}})),
        (Texts{"Card"}))
        << place;
  }
}

TEST(MatchDevices, SlotThatIsANumberTellsNothing) {
  EXPECT_EQ(cardNames(withAdapters({{"1", R"({"Id": "7", "Name": "Card"})"}},
                                   {{"N", R"({"Name": "Port", )" +
                                              serviceLabel("7") + "}"}}))
                .size(),
            2U);
}

TEST(MatchDevices, IdOfAControllerOrItsStorageIsThatOfTheDevice) {
  const Members devices = {{"1", R"({"Id": "RSLOT", "Name": "Card"})"}};
  EXPECT_EQ(cardNames(withControllers(
                devices, R"({"Name": "Raid", "MemberId": "RSLOT"})")),
            (Texts{"Card"}));
  EXPECT_EQ(cardNames(withControllers(devices, R"({"Name": "Raid"})", "RSLOT")),
            (Texts{"Card"}));
  EXPECT_EQ(cardNames(withControllers(
                          devices, R"({"Name": "Raid A"}, {"Name": "Raid B"})",
                          "RSLOT"))
                .size(),
            3U);
}

TEST(MatchDevices, NameInsideNameOrModelIsEnough) {
  const auto joined = [](const std::string& device, const std::string& part) {
    return cardNames(withAdapters({{"1", device}}, {{"N", part}})).size() == 1;
  };
  EXPECT_TRUE(
      joined(R"({"Name": "Orlen N10 Dual Port"})", R"({"Name": "ORLEN N10"})"));
  EXPECT_TRUE(
      joined(R"({"Model": "N10-25G"})", R"({"Name": "Kestwyn N10-25G OCP"})"));
  EXPECT_TRUE(joined(R"({"Name": "Card N10-25G"})", R"({"Id": "N10-25G"})"));
  EXPECT_FALSE(joined(R"({"Name": "Card N10"})", R"({"Name": "N10"})"));
  EXPECT_FALSE(joined(R"({"Name": "Network Adapter 25G"})",
                      R"({"Name": "Network Adapter"})"));
}

TEST(MatchDevices, DifferentSerialNumbersKeepPartsApart) {
  const Members devices = {
      {"1", R"({"Id": "MEZZ", "Name": "Orlen N10 A", "SerialNumber": "S1",
                "Manufacturer": "Orlen"})"}};
  EXPECT_EQ(cardNames(withAdapters(
                devices, {{"N", R"({"Name": "Orlen N10", "SerialNumber": "S2",
                            "Manufacturer": "Orlen", )" +
                                    serviceLabel("MEZZ") + "}"}})),
            (Texts{"Orlen N10", "Orlen N10 A"}));
}

TEST(MatchDevices, OnlyPartsOfOneNameAreOneWhateverTheirSerialNumbers) {
  const std::string device = R"({"Name": "Orlen N10", "SerialNumber": "S1"})";
  const std::string port = R"({"Name": "Orlen N10", "SerialNumber": "S2"})";
  EXPECT_EQ(cardNames(withAdapters({{"1", device}}, {{"N", port}})).size(), 1U);
  EXPECT_EQ(cardNames(withAdapters({{"1", device}}, {{"N", port}, {"M", port}}))
                .size(),
            3U);
}

TEST(MatchDevices, ModelThatIsTheNameOfTheOtherCounts) {
  EXPECT_EQ(cardNames(withControllers(
                {{"1", R"({"Name": "Boot Raid R2", "Model": "P1",
                           "SerialNumber": "S1"})"}},
                R"({"Model": "Boot Raid R2", "SerialNumber": "S2"})")),
            (Texts{"Boot Raid R2"}));
}

TEST(MatchDevices, DeviceIsTakenOnceByItsName) {
  EXPECT_EQ(cardNames(withAdapters({{"1", R"({"Name": "Orlen N10 Dual"})"}},
                                   {{"N", R"({"Name": "Orlen N10"})"},
                                    {"M", R"({"Name": "Orlen N10 D"})"}}))
                .size(),
            2U);
}

TEST(MatchDevices, OneOfEachThatIsLeftOfAMakerIsOne) {
  const Members devices = {
      {"1", R"({"Name": "Card", "Manufacturer": "ORLEN"})"},
      {"2", R"({"Name": "Chip", "Manufacturer": "Kestwyn"})"}};
  const std::string port = R"({"Name": "Port", "Manufacturer": "Orlen"})";
  EXPECT_EQ(cardNames(withAdapters(devices, {{"N", port}})),
            (Texts{"Card", "Chip"}));
  EXPECT_EQ(cardNames(withAdapters(devices, {{"N", port}, {"M", port}})).size(),
            4U);
}

// Parts that are told twice.

TEST(PciTwins, DeviceUnderTwoChassisIsOne) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "," +
                linkTo("Chassis/2") + "]}}");
  server.put("Chassis/2", "{}");
  const std::string card = R"({"Name": "Card", "SerialNumber": "S"})";
  server.members("Chassis/1", "PCIeDevices", {{"1", card}});
  server.members("Chassis/2", "PCIeDevices",
                 {{"1", card}, {"2", R"({"Name": "Card"})"}});
  EXPECT_EQ(cardsOf(server).size(), 2U);
}

TEST(PciTwins, AdapterUnderTwoChassisIsOne) {
  Server server(R"({"Links": {"Chassis": [)" + linkTo("Chassis/1") + "," +
                linkTo("Chassis/2") + "]}}");
  server.put("Chassis/2", "{}");
  const std::string port = R"({"Name": "Port", "SerialNumber": "S"})";
  server.members("Chassis/1", "NetworkAdapters", {{"1", port}, {"2", port}});
  server.members("Chassis/2", "NetworkAdapters", {{"3", port}});
  EXPECT_EQ(cardsOf(server).size(), 2U);
}

// Names.

TEST(PciNames, LabelIsFollowedByTheNameElseTheModel) {
  Server server =
      cardsWithDevices({{"A", R"({"Name": "Orlen N10"})"},
                        {"B", R"({"Name": "Orlen N10"})"},
                        {"C", R"({"Name": "PCIe Device", "Model": "KR8"})"},
                        {"D", R"({"Name": "PCIe Device"})"}});
  const auto slot = [](const std::string& text, const std::string& device) {
    return "{" + text + R"(, "Links": {"PCIeDevice": [)" +
           linkTo("Chassis/1/PCIeDevices/" + device) + "]}}";
  };
  server.linked(
      "Chassis/1", "PCIeSlots",
      R"({"Slots": [)" + slot(serviceLabel("Slot 4"), "A") + "," +
          slot(R"("Location": {"PartLocation": {"LocationOrdinalValue": 7}})",
               "B") +
          "," + slot(serviceLabel("Rear"), "C") + "," +
          slot(serviceLabel("Top"), "D") + "]}");
  EXPECT_EQ(cardNames(server),
            (Texts{"Rear KR8", "Slot 4 Orlen N10", "Slot 7 Orlen N10", "Top"}));
}

TEST(PciNames, PartsThatAreDevicesDoNotCount) {
  EXPECT_EQ(cardNames(withAdapters({{"D", R"({"Name": "Card",
                                          "SerialNumber": "S"})"}},
                                   {{"N", R"({"Name": "Card",
                                          "SerialNumber": "S"})"}})),
            (Texts{"Card"}));
}

TEST(PciNames, AbsentDevicesCount) {
  EXPECT_EQ(cardNames(cardsWithDevices(
                {{"D", R"({"Id": "D", "Name": "Card"})"},
                 {"E", R"({"Name": "Card", "Status": {"State": "Absent"}})"}})),
            (Texts{"Card D"}));
}

}  // namespace
}  // namespace devhealth
