#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "suite/base/failure.h"

namespace redfish {

// The files of a recorded answer, in the folder of its resource: the body, and
// beside it how the answer went where the body does not tell.

/// The part of a request's query that tells answers to one resource apart: all
/// of it but $expand, which brings members along and nothing else.
std::string distinctQuery(std::string_view query);

/// The name of the file that holds the body: "index.json", and for a query of
/// its own "index@QUERY.json", with percent-escapes for what no file name may
/// hold everywhere.
std::string bodyFileName(std::string_view query);

/// The name of the file beside it: "answer.json", "answer@QUERY.json".
std::string answerFileName(std::string_view query);

/// How an answer went, apart from its body.
struct StoredAnswer {
  int status = 0;        ///< HTTP status; 0 with a failure.
  std::string location;  ///< Of a redirect.
  /// Why there was no answer; address and URI are left empty.
  std::optional<base::Failure> failure;
};

/// The text of an answer's file.
std::string textOf(const StoredAnswer& answer);

/// Reads the text of an answer's file. Returns nullopt if it is none.
std::optional<StoredAnswer> parseStoredAnswer(std::string_view text);

/// Whether a stored body is an error response, which alone means a 404.
bool isErrorBody(const std::string& body);

}  // namespace redfish
