#include "suite/http/basic_login.h"

#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/transform_width.hpp>
#include <string>
#include <utility>

namespace http {

base::Secret basicLogin(std::string_view user, const base::Secret& password) {
  namespace iterators = boost::archive::iterators;
  using Base64 = iterators::base64_from_binary<
      iterators::transform_width<const char*, 6, 8>>;
  const base::Secret login({user, ":", password.text()});
  const char* const begin = login.text().data();
  std::string encoded;
  encoded.reserve(login.text().size() * 4 / 3 + 1);
  encoded.assign(Base64(begin), Base64(begin + login.text().size()));
  return base::Secret(std::move(encoded));
}

}  // namespace http
