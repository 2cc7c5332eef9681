#include "suite/redfish/recording/recording.h"

#include <algorithm>
#include <set>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/uri.h"
#include "suite/redfish/recorded/stored_answer.h"
#include "suite/redfish/recording/body_masking.h"
#include "suite/redfish/recording/json_text.h"
#include "suite/redfish/recording/nested_documents.h"

namespace redfish {
namespace {

constexpr int kOk = 200;
constexpr int kNotFound = 404;

struct Place {
  std::string path;   // Without slashes at its ends; escapes are decoded.
  std::string query;  // That tells answers apart.
};

Place placeOf(std::string_view target) {
  const std::size_t mark = std::min(target.find('?'), target.size());
  Place place;
  place.path = decodePercent(target.substr(0, mark));
  while (!place.path.empty() && place.path.back() == '/') {
    place.path.pop_back();
  }
  place.path.erase(
      0, std::min(place.path.find_first_not_of('/'), place.path.size()));
  place.query = distinctQuery(target.substr(std::min(mark + 1, target.size())));
  return place;
}

std::string keyOf(const Place& place) {
  return place.query.empty() ? place.path : place.path + '?' + place.query;
}

// Sessions of this login and of others.
bool isSession(const std::string& path) {
  return base::lowerCase(path).find("/sessionservice/sessions/") !=
         std::string::npos;
}

// How an answer went, where its body would not tell.
std::string answerText(const http::Answer& answer,
                       const std::function<std::string(std::string)>& change) {
  StoredAnswer stored;
  stored.status = answer.status;
  stored.location = change(answer.location);
  stored.failure = answer.failure;
  if (stored.failure) {
    stored.failure->cause = change(stored.failure->cause);
    stored.failure->remedy = change(stored.failure->remedy);
  } else if (answer.status == (isErrorBody(answer.body) ? kNotFound : kOk)) {
    return "";
  }
  return textOf(stored);
}

}  // namespace

void Recording::keep(std::string_view target, const http::Answer& answer) {
  const Place place = placeOf(target);
  if (place.path.empty() || isSession('/' + place.path + '/')) {
    return;
  }
  if (answer.failure &&
      answer.failure->kind == base::FailureKind::kInterrupted) {
    ++refused_;
    return;
  }
  const std::string key = keyOf(place);
  const auto known = answers_.find(key);
  const std::size_t before =
      known == answers_.end() ? 0 : known->second.body.size();
  if (bytes_ - before + answer.body.size() > kMostBytes) {
    ++refused_;
    return;
  }
  bytes_ += answer.body.size() - before;
  http::Answer& kept = answers_[key];
  kept = http::Answer();
  kept.status = answer.status;
  kept.failure = answer.failure;
  kept.location = answer.location;
  kept.body = answer.body;
}

void Recording::noteSecret(base::Secret secret) {
  const bool known = std::any_of(secrets_.begin(), secrets_.end(),
                                 [&secret](const base::Secret& other) {
                                   return other.text() == secret.text();
                                 });
  if (!secret.empty() && !known) {
    secrets_.push_back(std::move(secret));
  }
}

bool Recording::empty() const {
  return std::all_of(answers_.begin(), answers_.end(), [](const auto& kept) {
    return kept.second.failure.has_value();
  });
}

std::string Recording::missing() const {
  if (refused_ > 0) {
    return std::to_string(refused_) + " answers could not be kept";
  }
  if (underWay_ > 0) {
    return std::to_string(underWay_) + " requests were not answered";
  }
  return "";
}

void Recording::note(masking::Masker& masker) const {
  for (const std::string& user : users_) {
    masker.note(user);
  }
  for (const auto& [target, answer] : answers_) {
    noteBody(answer.body, masker);
  }
}

void Recording::forEachFile(
    masking::Masker* masker,
    const std::function<void(const RecordedFile&)>& take) const {
  const auto change = [this, masker](std::string text) {
    text = withoutSecrets(std::move(text));
    return masker == nullptr ? text : masker->text(text);
  };
  std::set<std::string> written;  // Of the resources inside of others.
  for (const auto& [target, answer] : answers_) {
    const std::size_t mark = std::min(target.find('?'), target.size());
    const std::string folder = change(target.substr(0, mark)) + '/';
    const std::string query =
        change(target.substr(std::min(mark + 1, target.size())));
    // A reading that asks in another order may ask for these on their own.
    forEachNestedDocument(
        answer.body, [&](const std::string& link, const std::string& body) {
          const std::string key = keyOf(placeOf(link));
          if (answers_.count(key) == 0 && !isSession('/' + key + '/') &&
              written.insert(key).second) {
            const Place place = placeOf(link);
            take({change(place.path) + '/' + bodyFileName(change(place.query)),
                  bodyOf(body, masker)});
          }
        });
    if (!answer.failure) {
      take({folder + bodyFileName(query), bodyOf(answer.body, masker)});
    }
    std::string beside = answerText(answer, change);
    if (!beside.empty()) {
      take({folder + answerFileName(query), std::move(beside)});
    }
  }
}

std::string Recording::withoutSecrets(std::string text) const {
  for (const base::Secret& secret : secrets_) {
    text = base::withoutSecret(std::move(text), secret.text());
  }
  return text;
}

std::string Recording::bodyWithoutSecrets(const std::string& body) const {
  if (!parseObject(body)) {
    return withoutSecrets(body);
  }
  return withTokens(body, [this](const JsonToken& token) {
    std::string value(token.value);
    return token.kind != JsonToken::Kind::kText || token.role.format
               ? value
               : withoutSecrets(std::move(value));
  });
}

std::string Recording::bodyOf(const std::string& body,
                              masking::Masker* masker) const {
  std::string clean = secrets_.empty() ? body : bodyWithoutSecrets(body);
  return masker == nullptr ? clean : maskBody(clean, *masker);
}

}  // namespace redfish
