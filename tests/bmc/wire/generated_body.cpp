#include "tests/bmc/wire/generated_body.h"

#include <random>
#include <utility>

namespace bmc {
namespace {

constexpr std::string_view kNumberMark = "#########";

std::string repetitionOf(const std::string& text, std::uint64_t number) {
  const std::size_t mark = text.find(kNumberMark);
  if (mark == std::string::npos) {
    return text;
  }
  std::string digits = std::to_string(number);
  if (digits.size() < kNumberMark.size()) {
    digits.insert(0, kNumberMark.size() - digits.size(), '0');
  }
  std::string copy = text;
  copy.replace(mark, kNumberMark.size(), digits, 0, kNumberMark.size());
  return copy;
}

}  // namespace

GeneratedBody::GeneratedBody(std::vector<BodyPart> parts)
    : parts_(std::move(parts)) {}

std::optional<std::uint64_t> GeneratedBody::size() const {
  std::uint64_t sum = 0;
  for (const BodyPart& part : parts_) {
    sum += part.text.size() * part.times;
  }
  return sum;
}

std::string_view GeneratedBody::next(std::size_t limit) {
  if (taken_ == pending_.size()) {
    pending_.clear();
    taken_ = 0;
    refill(limit);
  }
  std::string_view bytes = pending_;
  bytes = bytes.substr(taken_, limit);
  taken_ += bytes.size();
  return bytes;
}

void GeneratedBody::refill(std::size_t wanted) {
  while (pending_.size() < wanted && part_ < parts_.size()) {
    const BodyPart& part = parts_[part_];
    if (repetition_ < part.times) {
      pending_ += repetitionOf(part.text, repetition_++);
    } else {
      ++part_;
      repetition_ = 0;
    }
  }
}

std::string noise(std::size_t count) {
  std::mt19937 generator;  // Its default seed makes it the same every time.
  std::string bytes(count, '\0');
  for (char& byte : bytes) {
    byte = static_cast<char>(generator() & 0xffU);
  }
  return bytes;
}

}  // namespace bmc
