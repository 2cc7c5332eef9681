#include "suite/local/pci/pci_vpd.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <thread>

#include "suite/base/time_limit.h"

namespace local {
namespace {

// Each byte is a slow access to the card, so reading stops where the data
// end, and at a length that none needs.
constexpr std::size_t kChunk = 256;
constexpr std::size_t kLongest = 4096;
constexpr std::uint8_t kEndTag = 0x78;
constexpr std::uint8_t kReadOnlyTag = 0x90;

std::string fieldText(base::ByteView field) {
  // Fields are padded with blanks or NULs.
  const std::string_view text = field.text();
  const std::size_t last = text.find_last_not_of(std::string_view(" \0", 2));
  return std::string(text.substr(0, last + 1));
}

void readFields(base::ByteView resource, VitalProductData& data) {
  std::size_t offset = 0;
  while (const auto keyword = resource.slice(offset, 2)) {
    base::heedTime();
    const auto length = resource.byte(offset + 2);
    if (!length) {
      return;
    }
    const auto field = resource.slice(offset + 3, *length);
    if (!field) {
      return;
    }
    if (keyword->text() == "SN") {
      data.serial = fieldText(*field);
    }
    if (keyword->text() == "PN") {
      data.partNumber = fieldText(*field);
    }
    offset += 3U + *length;
  }
}

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

VitalProductData readVpd(const std::string& path) {
  const std::unique_ptr<std::FILE, CloseFile> file(
      std::fopen(path.c_str(), "rb"));
  if (file == nullptr) {
    return {};
  }
  // No byte ahead of those that are asked for.
  std::setvbuf(file.get(), nullptr, _IONBF, 0);
  std::string bytes;
  VitalProductData data;
  while (!data.complete && bytes.size() < kLongest) {
    char chunk[kChunk];
    const std::size_t count = std::fread(chunk, 1, sizeof chunk, file.get());
    if (count == 0) {
      break;
    }
    bytes.append(chunk, count);
    data = parseVpd(base::ByteView(bytes));
  }
  return data;
}

// What the reading thread shares with the one that waits for it. The thread
// may outlive the wait, held up by a card; it touches nothing else then.
struct Reading {
  std::mutex mutex;
  std::condition_variable ended;
  bool done = false;
  bool abandoned = false;
  std::map<std::string, VitalProductData> found;
};

}  // namespace

VitalProductData parseVpd(base::ByteView bytes) {
  VitalProductData data;
  std::size_t offset = 0;
  while (const auto tag = bytes.byte(offset)) {
    base::heedTime();
    if (*tag == kEndTag) {
      data.complete = true;
      break;
    }
    const bool large = (*tag & 0x80U) != 0;
    const auto length = large ? bytes.word(offset + 1)
                              : std::optional<std::uint16_t>(*tag & 0x07U);
    if (!length) {
      break;
    }
    offset += large ? 3 : 1;
    if (*tag == kReadOnlyTag) {
      // A part of it is worth reading too: serial and part numbers come
      // first.
      readFields(base::ByteView(bytes.from(offset).text().substr(0, *length)),
                 data);
    }
    if (!large && *length == 0) {
      break;  // Zeros: no data, or no memory.
    }
    offset += *length;
  }
  return data;
}

std::map<std::string, VitalProductData> readVpds(
    const Root& root, const std::vector<std::string>& folders,
    std::chrono::milliseconds limit) {
  std::map<std::string, std::string> paths;
  for (const std::string& folder : folders) {
    const std::string path = folder + "/vpd";
    if (root.exists(path)) {
      paths[folder] = root.path(path);
    }
  }
  if (paths.empty()) {
    return {};
  }
  const auto reading = std::make_shared<Reading>();
  std::thread([reading, paths] {
    for (const auto& entry : paths) {
      VitalProductData data = readVpd(entry.second);
      const std::lock_guard<std::mutex> lock(reading->mutex);
      if (reading->abandoned) {
        return;
      }
      reading->found[entry.first] = std::move(data);
    }
    const std::lock_guard<std::mutex> lock(reading->mutex);
    reading->done = true;
    reading->ended.notify_one();
  }).detach();
  std::unique_lock<std::mutex> lock(reading->mutex);
  reading->ended.wait_for(lock, limit, [&] { return reading->done; });
  reading->abandoned = true;
  return std::move(reading->found);
}

}  // namespace local
