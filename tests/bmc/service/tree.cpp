#include "tests/bmc/service/tree.h"

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <filesystem>
#include <system_error>
#include <utility>

#include "tests/support/file_text.h"

namespace bmc {
namespace {

namespace fs = std::filesystem;
namespace json = boost::json;

constexpr std::string_view kRoot = "/redfish/v1";

std::optional<json::object> parseObject(const std::string& text) {
  json::error_code error;
  json::value value = json::parse(text, error);
  if (error || !value.is_object()) {
    return std::nullopt;
  }
  return std::move(value.get_object());
}

bool isServiceRoot(const fs::path& file) {
  const auto object = parseObject(support::fileText(file));
  if (!object) {
    return false;
  }
  const json::value* type = object->if_contains("@odata.type");
  return type != nullptr && type->is_string() &&
         type->get_string().starts_with("#ServiceRoot.");
}

std::string_view contentTypeOf(const fs::path& file) {
  if (file.filename() == "index.json") {
    return "application/json;charset=utf-8";
  }
  if (file.filename() == "index.xml") {
    return "application/xml;charset=utf-8";
  }
  return {};
}

}  // namespace

std::optional<Tree> Tree::load(const std::string& folder, std::string& error) {
  std::error_code code;
  const fs::path base(folder);
  if (!fs::is_directory(base, code)) {
    error = folder + ": no such folder";
    return std::nullopt;
  }

  std::string prefix;
  if (isServiceRoot(base / "index.json")) {
    prefix = kRoot;
  } else if (!isServiceRoot(base / "redfish/v1/index.json")) {
    error = folder + ": neither index.json nor redfish/v1/index.json is a " +
            "service root";
    return std::nullopt;
  }

  Tree tree;
  for (fs::recursive_directory_iterator entry(base, code), end;
       !code && entry != end; entry.increment(code)) {
    const std::string_view type = contentTypeOf(entry->path());
    if (type.empty() || entry->is_symlink() || !entry->is_regular_file()) {
      continue;
    }
    const fs::path place = entry->path().lexically_relative(base).parent_path();
    std::string key = prefix;
    if (!place.empty()) {
      key += "/" + place.generic_string();
    }
    tree.resources_[key] = {
        std::make_shared<const std::string>(support::fileText(entry->path())),
        std::string(type)};
  }
  if (code) {
    error = folder + ": " + code.message();
    return std::nullopt;
  }
  return tree;
}

const StoredResource* Tree::find(std::string_view path) const {
  const auto found = resources_.find(path);
  return found == resources_.end() ? nullptr : &found->second;
}

const json::object* Tree::object(std::string_view path) const {
  auto found = parsed_.find(path);
  if (found == parsed_.end()) {
    const StoredResource* stored = find(path);
    if (stored == nullptr) {
      return nullptr;
    }
    found =
        parsed_.emplace(std::string(path), parseObject(*stored->text)).first;
  }
  return found->second ? &*found->second : nullptr;
}

void Tree::replace(std::string_view path, json::object object) {
  resources_[std::string(path)] = {
      std::make_shared<const std::string>(json::serialize(object)),
      "application/json;charset=utf-8"};
  parsed_[std::string(path)] = std::move(object);
}

void Tree::remove(std::string_view path) {
  resources_.erase(std::string(path));
  parsed_.erase(std::string(path));
}

std::vector<std::string> Tree::paths() const {
  std::vector<std::string> paths;
  paths.reserve(resources_.size());
  for (const auto& entry : resources_) {
    paths.push_back(entry.first);
  }
  return paths;
}

}  // namespace bmc
