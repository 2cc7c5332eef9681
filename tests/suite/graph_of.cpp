#include "tests/suite/graph_of.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

#include "tests/support/file_text.h"

namespace fs = std::filesystem;

void put(redfish::Graph& graph, std::string_view link, std::string_view text) {
  const std::optional<redfish::Uri> uri = redfish::Uri::parse(link);
  ASSERT_TRUE(uri.has_value()) << link;
  redfish::Resource resource;
  resource.uri = *uri;
  if (text == kBroken) {
    resource.state = redfish::ResourceState::kUnreadable;
    resource.failure = base::Failure{base::FailureKind::kServerError, "bmc:443",
                                     std::string(link), "HTTP status 500", ""};
  } else if (text != kMissing) {
    auto body = redfish::parseObject(text);
    ASSERT_TRUE(body) << link << ": " << body.error().cause;
    resource.state = redfish::ResourceState::kRead;
    resource.body = std::move(*body);
  }
  graph.insert(std::move(resource));
}

redfish::Graph graphOf(
    const std::vector<std::pair<std::string_view, std::string>>& resources) {
  redfish::Graph graph;
  for (const auto& [link, text] : resources) {
    put(graph, link, text);
  }
  return graph;
}

redfish::Graph recordedGraph(const std::string& directory) {
  redfish::Graph graph;
  fs::path top = fs::path(directory) / "redfish" / "v1";
  if (!fs::exists(top)) {
    top = directory;
  }
  for (const auto& entry : fs::recursive_directory_iterator(top)) {
    if (entry.path().filename() != "index.json") {
      continue;
    }
    const fs::path relative = fs::relative(entry.path().parent_path(), top);
    put(graph,
        relative == "." ? "/redfish/v1"
                        : "/redfish/v1/" + relative.generic_string(),
        support::fileText(entry.path()));
  }
  return graph;
}
