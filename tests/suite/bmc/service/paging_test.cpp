#include "tests/bmc/service/paging.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

namespace bmc {
namespace {

std::string paged(const char* text, const char* again, const Page& page) {
  boost::json::object object = boost::json::parse(text).as_object();
  paginate(object, again, page);
  return boost::json::serialize(object);
}

TEST(Paginate, FirstPageLinksToTheNext) {
  EXPECT_EQ(paged(R"({"Members":[1,2,3]})", "/A", {0, 2}),
            R"({"Members":[1,2],"Members@odata.nextLink":"/A?$skip=2"})");
}

TEST(Paginate, LastPageLinksNowhere) {
  EXPECT_EQ(paged(R"({"Members":[1,2,3]})", "/A", {2, 2}),
            R"({"Members":[3]})");
}

TEST(Paginate, OtherQueryIsKept) {
  EXPECT_EQ(
      paged(R"({"Members":[1,2]})", "/A?$expand=.", {0, 1}),
      R"({"Members":[1],"Members@odata.nextLink":"/A?$expand=.&$skip=1"})");
}

TEST(Paginate, PageBeyondTheEndIsEmpty) {
  EXPECT_EQ(paged(R"({"Members":[1]})", "/A", {7, 2}), R"({"Members":[]})");
}

TEST(Paginate, WithoutSizeAllMembersStay) {
  EXPECT_EQ(paged(R"({"Members":[1,2]})", "/A", {}), R"({"Members":[1,2]})");
}

TEST(Paginate, OtherResourcesStayAsTheyAre) {
  EXPECT_EQ(paged(R"({"Members":{}})", "/A", {0, 1}), R"({"Members":{}})");
}

}  // namespace
}  // namespace bmc
