#include "suite/connection/connections.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "suite/run/run.h"
#include "syshealth/host/connect_info.h"
#include "tests/support/temp_folder.h"

namespace {

using connection::Connections;
using connection::Target;
using Tarvex::TarvexConnection::ConnectionInfo;

Target targetAt(const std::string& text) {
  Target target;
  target.address = connection::parseAddress(text).value();
  target.user = target.address.user;
  return target;
}

Target sample(const std::string& name) {
  return targetAt("file:" SAMPLES "/" + name);
}

// A port of this machine that nobody listens at.
std::uint16_t closedPort() {
  const int descriptor = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address = {};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  EXPECT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), size), 0);
  getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size);
  close(descriptor);
  return ntohs(address.sin_port);
}

TEST(ConnectInfoInstance, IsMissingWithoutConnections) {
  EXPECT_EQ(ConnectInfo::Getinstance(), nullptr);
  { Connections run(kConnectModeInBand, std::nullopt, std::nullopt, {}); }
  EXPECT_EQ(ConnectInfo::Getinstance(), nullptr);
}

TEST(ConnectInfoInstance, IsOneObjectWhileTheRunLives) {
  Connections run(kConnectModeOutOfBand, sample("two-node"), std::nullopt, {});
  ASSERT_NE(ConnectInfo::Getinstance(), nullptr);
  EXPECT_EQ(ConnectInfo::Getinstance(), ConnectInfo::Getinstance());
}

TEST(GetConMode, IsTheRunsMode) {
  for (const ConnectMode mode :
       {kConnectModeInBand, kConnectModeOutOfBand, kConnectModeEsxi}) {
    Connections run(mode, sample("two-node"), std::nullopt, {});
    EXPECT_EQ(ConnectInfo::Getinstance()->GetConMode(), mode);
  }
}

TEST(TryCimCon, ReachesARecordedServer) {
  Connections run(kConnectModeOutOfBand, sample("rack-server"), std::nullopt,
                  {});
  ConnectionInfo info;
  EXPECT_EQ(ConnectInfo::Getinstance()->TryCimCon(info), 0) << run.cause();
  EXPECT_EQ(info.address, "file:" SAMPLES "/rack-server");
  EXPECT_EQ(info.nodeIndex, 0);
  EXPECT_EQ(info.protocol, 3);
  EXPECT_NE(run::Run::current()->pool().find(info.service), nullptr);
  EXPECT_EQ(run.cause(), "");
}

TEST(TryCimCon, MissingDirectoryIsToldWithItsCause) {
  Connections run(kConnectModeOutOfBand, sample("none"), std::nullopt, {});
  ConnectionInfo info;
  EXPECT_EQ(ConnectInfo::Getinstance()->TryCimCon(info), 6);
  EXPECT_NE(run.cause().find("samples/none"), std::string::npos);
}

TEST(TryCimCon, RefusedConnectionIsToldWithItsCause) {
  const std::string address = "127.0.0.1:" + std::to_string(closedPort());
  Connections run(kConnectModeOutOfBand, targetAt("http://" + address),
                  std::nullopt, {});
  ConnectionInfo info;
  EXPECT_EQ(ConnectInfo::Getinstance()->TryCimCon(info), 13);
  EXPECT_EQ(run.cause().rfind(address + ": ", 0), 0U) << run.cause();
}

TEST(TryCimCon, MissingPasswordFileIsToldBeforeAnythingIsContacted) {
  Target target = targetAt("http://admin@127.0.0.1:1");
  target.password.optionFile = "/nonexistent/password";
  Connections run(kConnectModeOutOfBand, target, std::nullopt, {});
  ConnectionInfo info;
  EXPECT_EQ(ConnectInfo::Getinstance()->TryCimCon(info), 43);
  EXPECT_EQ(run.cause(),
            "127.0.0.1:1: the password file /nonexistent/password does not "
            "exist");
  EXPECT_TRUE(run.costs().empty());
}

TEST(TryCimCon, RecordTellsUserAndOriginOfThePassword) {
  const support::TempFolder directory;
  Target target =
      targetAt("http://admin@127.0.0.1:" + std::to_string(closedPort()));
  target.password.optionFile = directory.write("pw", "hunter2\n");
  Connections run(kConnectModeOutOfBand, target, std::nullopt, {});
  ConnectionInfo info;
  EXPECT_EQ(ConnectInfo::Getinstance()->TryCimCon(info), 13);
  EXPECT_EQ(info.user, "admin");
  EXPECT_EQ(info.credential, "file " + directory.at("pw"));
  EXPECT_EQ(info.address, "127.0.0.1");
}

TEST(OutOfBandList, FailsWithTheCodeOfTheSummary) {
  Connections run(kConnectModeOutOfBand, targetAt("http://127.0.0.1:1"),
                  std::nullopt, {});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetCimConnectInfo(list), 13);
  EXPECT_TRUE(list.empty());
  EXPECT_TRUE(run.hasReturned(13));
}

TEST(OutOfBandList, IsTheFirstNodeWithANote) {
  Connections run(kConnectModeOutOfBand, sample("two-node"), std::nullopt, {});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetCimConnectInfo(list), 0);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].nodeIndex, 0);
  ASSERT_EQ(run.notices().size(), 1U);
  EXPECT_EQ(run.notices()[0].rfind("this service has 2 nodes", 0), 0U);
}

TEST(OutOfBandList, IsTheNodeThatIsAskedFor) {
  Connections run(kConnectModeOutOfBand, sample("two-node"), std::nullopt,
                  {redfish::kWantDimms, 2});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetCimConnectInfo(list), 0);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].nodeIndex, 1);
  EXPECT_TRUE(run.notices().empty());
}

TEST(OutOfBandList, NodeThatThereIsNotEndsTheRun) {
  for (const int number : {-1, 0, 3}) {
    Connections run(kConnectModeOutOfBand, sample("two-node"), std::nullopt,
                    {redfish::kWantDimms, number});
    std::vector<ConnectionInfo> list;
    try {
      ConnectInfo::Getinstance()->GetCimConnectInfo(list);
      FAIL() << number;
    } catch (const base::Failure& failure) {
      EXPECT_EQ(failure.kind, base::FailureKind::kUsage);
      EXPECT_EQ(failure.cause, "--node " + std::to_string(number) +
                                   ": this service has 2 nodes");
    }
  }
}

TEST(OutOfBandTest, NameThatIsNoTargetIsToldSo) {
  Target target = targetAt("https://name.invalid");
  target.notNamed = "'name.invalid' is no target in a.toml (n1)";
  target.similarName = "n1";
  Connections run(kConnectModeOutOfBand, target, std::nullopt, {});
  ConnectionInfo info;
  EXPECT_EQ(ConnectInfo::Getinstance()->TryCimCon(info), 13);
  EXPECT_EQ(run.cause(),
            "'name.invalid' is no target in a.toml (n1), and no host of that "
            "name is found; did you mean 'n1'?");
}

TEST(OutOfBandList, IsTheSameForBothKinds) {
  Connections run(kConnectModeOutOfBand, sample("two-node"), std::nullopt, {});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetIpmiConnectInfo(list), 0);
  EXPECT_EQ(list.size(), 1U);
}

TEST(OutOfBandList, NamesAFailureOfTheCredential) {
  Target target = targetAt("http://admin@127.0.0.1:1");
  target.password.optionFile = "/nonexistent/password";
  Connections run(kConnectModeOutOfBand, target, std::nullopt, {});
  std::vector<ConnectionInfo> list;
  const ConnectionErr error =
      ConnectInfo::Getinstance()->GetCimConnectInfo(list);
  EXPECT_EQ(ConnectInfo::Getinstance()->ParseCimError(error).code, 43);
  EXPECT_TRUE(list.empty());
}

TEST(InBandList, HasOneRecordPerNode) {
  Connections run(kConnectModeInBand, sample("two-node"), std::nullopt, {});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetCimConnectInfo(list), 0)
      << run.cause();
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].nodeIndex, 0);
  EXPECT_EQ(list[1].nodeIndex, 1);
  EXPECT_EQ(list[0].service, list[1].service);
}

TEST(InBandList, IsReadOncePerRun) {
  Connections run(kConnectModeInBand, sample("two-node"), std::nullopt, {});
  std::vector<ConnectionInfo> list;
  ConnectInfo::Getinstance()->GetCimConnectInfo(list);
  const std::uint64_t requests = run.costs().at(0).requests;
  list.clear();
  ConnectInfo::Getinstance()->GetIpmiConnectInfo(list);
  EXPECT_EQ(list.size(), 2U);
  EXPECT_EQ(run.costs().at(0).requests, requests);
}

TEST(InBandList, ReadsAlongWhatTheRunWillAskFor) {
  Connections run(kConnectModeInBand, sample("two-node"), std::nullopt,
                  {redfish::kWantDimms, 2});
  std::vector<ConnectionInfo> list;
  ConnectInfo::Getinstance()->GetCimConnectInfo(list);
  ASSERT_EQ(list.size(), 2U);
  const std::uint64_t requests = run.costs().at(0).requests;
  redfish::Selection second;
  second.nodeIndex = 1;
  second.wants = redfish::kWantDimms;
  EXPECT_FALSE(run::Run::current()->pool().find(0)->read(second));
  EXPECT_EQ(run.costs().at(0).requests, requests);
}

TEST(InBandList, IsWholeForANodeThatThereIsNot) {
  Connections run(kConnectModeInBand, sample("two-node"), std::nullopt,
                  {redfish::kWantDimms, 3});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetCimConnectInfo(list), 0);
  EXPECT_EQ(list.size(), 2U);
  EXPECT_EQ(run.cause(), "--node 3: this server has 2 nodes");
}

TEST(InBandList, KeepsANodeThatCannotBeRead) {
  const support::TempFolder tree;
  tree.write("redfish/v1/index.json",
             R"({"@odata.type": "#ServiceRoot.v1_5_0.ServiceRoot",
                 "RedfishVersion": "1.6.0",
                 "Systems": {"@odata.id": "/redfish/v1/Systems"}})");
  tree.write("redfish/v1/Systems/index.json",
             R"({"Members": [{"@odata.id": "/redfish/v1/Systems/A"},
                             {"@odata.id": "/redfish/v1/Systems/B"}]})");
  tree.write("redfish/v1/Systems/A/index.json", "this is no JSON");
  tree.write("redfish/v1/Systems/B/index.json", R"({"Id": "B"})");
  Connections run(kConnectModeInBand, targetAt("file:" + tree.path().string()),
                  std::nullopt, {});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetCimConnectInfo(list), 0)
      << run.cause();
  EXPECT_EQ(list.size(), 2U);
}

TEST(InBandList, ServiceWithoutSystemsHasOneRecordThatTellsSo) {
  const support::TempFolder tree;
  tree.write("redfish/v1/index.json",
             R"({"@odata.type": "#ServiceRoot.v1_5_0.ServiceRoot",
                 "RedfishVersion": "1.6.0"})");
  Connections run(kConnectModeInBand, targetAt("file:" + tree.path().string()),
                  std::nullopt, {});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetCimConnectInfo(list), 0);
  EXPECT_EQ(list.size(), 1U);
}

TEST(InBandList, FailureToReadIsTold) {
  Connections run(kConnectModeInBand, sample("none"), std::nullopt, {});
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetCimConnectInfo(list), 6);
  EXPECT_TRUE(list.empty());
}

TEST(EsxiMode, ReachesAndListsOneRecordWithoutContact) {
  Connections run(kConnectModeEsxi, targetAt("admin@127.0.0.1:1"), std::nullopt,
                  {});
  ConnectionInfo info;
  EXPECT_EQ(ConnectInfo::Getinstance()->TryCimCon(info), 0);
  EXPECT_EQ(info.service, run::kNoService);
  std::vector<ConnectionInfo> list;
  EXPECT_EQ(ConnectInfo::Getinstance()->GetIpmiConnectInfo(list), 0);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].service, run::kNoService);
  EXPECT_TRUE(run.costs().empty());
}

TEST(ParseCimError, SuccessStandsForAnEmptyList) {
  Connections run(kConnectModeInBand, std::nullopt, std::nullopt, {});
  const BrivelResult result =
      ConnectInfo::Getinstance()->ParseCimError(kConnectionErrNone);
  EXPECT_EQ(result.code, 13);
  EXPECT_EQ(result.message, "Connection failed.");
}

TEST(ParseCimError, ErrorsAreSuiteWideCodes) {
  Connections run(kConnectModeInBand, std::nullopt, std::nullopt, {});
  const BrivelResult result =
      ConnectInfo::Getinstance()->ParseCimError(static_cast<ConnectionErr>(18));
  EXPECT_EQ(result.code, 18);
  EXPECT_EQ(result.message, "Timeout.");
}

TEST(ParseCimError, WhatIsNoErrorOfOursIsAFailureStill) {
  Connections run(kConnectModeInBand, std::nullopt, std::nullopt, {});
  for (const int error : {-1, 256, 0x1006A}) {
    EXPECT_EQ(ConnectInfo::Getinstance()
                  ->ParseCimError(static_cast<ConnectionErr>(error))
                  .code,
              13)
        << error;
  }
}

}  // namespace
