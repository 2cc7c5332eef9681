#include "tests/bmc/wire/error_body.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <utility>

namespace bmc {

Reply jsonReply(int status, std::string text) {
  Reply reply;
  reply.status = status;
  reply.headers = {{"OData-Version", "4.0"},
                   {"Cache-Control", "no-cache"},
                   {"Content-Type", "application/json;charset=utf-8"}};
  reply.body = std::make_unique<TextBody>(std::move(text));
  return reply;
}

Reply errorReply(int status, std::string_view messageKey, std::string message) {
  const std::string id = "Base.1.18." + std::string(messageKey);
  boost::json::object detail{{"@odata.type", "#Message.v1_1_2.Message"},
                             {"MessageId", id},
                             {"Message", message},
                             {"MessageSeverity", "Critical"},
                             {"Resolution", "None."}};
  boost::json::object error{
      {"code", id},
      {"message", std::move(message)},
      {"@Message.ExtendedInfo", boost::json::array{std::move(detail)}}};
  return jsonReply(
      status, boost::json::serialize(boost::json::object{{"error", error}}));
}

}  // namespace bmc
