#pragma once

#include <boost/json/object.hpp>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bmc {

/// One stored resource.
struct StoredResource {
  std::shared_ptr<const std::string> text;  ///< As recorded.
  std::string contentType;
};

/// A recorded Redfish tree, read into memory whole, so that no request can
/// reach a file. Two layouts are known: "redfish/v1/A/index.json", and the
/// short form "A/index.json" below a folder whose own index.json is the
/// service root. Symbolic links are not followed.
class Tree {
 public:
  /// Reads a folder. On failure nothing, and the reason in `error`.
  static std::optional<Tree> load(const std::string& folder,
                                  std::string& error);

  /// The resource at a path such as "/redfish/v1/Systems"; null when there is
  /// none.
  const StoredResource* find(std::string_view path) const;

  /// The resource as a JSON object; null when it is none. Parsed once.
  const boost::json::object* object(std::string_view path) const;

  /// Puts an object in place of a resource, or adds one.
  void replace(std::string_view path, boost::json::object object);

  /// Takes a resource out.
  void remove(std::string_view path);

  /// The paths of all resources, in order.
  std::vector<std::string> paths() const;

 private:
  std::map<std::string, StoredResource, std::less<>> resources_;
  mutable std::map<std::string, std::optional<boost::json::object>, std::less<>>
      parsed_;
};

}  // namespace bmc
