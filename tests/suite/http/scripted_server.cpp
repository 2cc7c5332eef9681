#include "tests/suite/http/scripted_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <openssl/pem.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <stdexcept>

namespace {

void require(bool success) {
  if (!success) {
    throw std::runtime_error("a scripted server cannot start");
  }
}

void useIdentity(SSL_CTX* context, const bmc::Identity& identity) {
  const auto memory = [](const std::string& text) {
    return BIO_new_mem_buf(text.data(), static_cast<int>(text.size()));
  };
  BIO* certificateText = memory(identity.certificate);
  BIO* keyText = memory(identity.key);
  X509* certificate =
      PEM_read_bio_X509(certificateText, nullptr, nullptr, nullptr);
  EVP_PKEY* key = PEM_read_bio_PrivateKey(keyText, nullptr, nullptr, nullptr);
  const bool used = SSL_CTX_use_certificate(context, certificate) == 1 &&
                    SSL_CTX_use_PrivateKey(context, key) == 1;
  X509_free(certificate);
  EVP_PKEY_free(key);
  BIO_free(certificateText);
  BIO_free(keyText);
  require(used);
}

int chooseProtocol(SSL* /*tls*/, const unsigned char** chosen,
                   unsigned char* chosenSize, const unsigned char* offered,
                   unsigned int offeredSize, void* wanted) {
  const auto& list = *static_cast<const std::string*>(wanted);
  // The library takes the choice by another type than it asks for it.
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
  auto** const out = const_cast<unsigned char**>(chosen);
  return SSL_select_next_proto(
             out, chosenSize,
             reinterpret_cast<const unsigned char*>(list.data()),
             static_cast<unsigned int>(list.size()), offered,
             offeredSize) == OPENSSL_NPN_NEGOTIATED
             ? SSL_TLSEXT_ERR_OK
             : SSL_TLSEXT_ERR_NOACK;
}

}  // namespace

bool Peer::waitFor(short events, int milliseconds) {
  pollfd watched[] = {{socket_, events, 0}, {stop_, POLLIN, 0}};
  return poll(watched, 2, milliseconds) > 0 && watched[1].revents == 0;
}

std::string Peer::read(std::size_t limit) {
  if (buffer_.empty()) {
    const bool pending = tls_ != nullptr && SSL_pending(tls_) > 0;
    if (!pending && !waitFor(POLLIN, -1)) {
      return {};
    }
    char chunk[16384];
    const auto size =
        tls_ != nullptr
            ? SSL_read(tls_, chunk, sizeof chunk)
            : static_cast<int>(recv(socket_, chunk, sizeof chunk, 0));
    if (size <= 0) {
      return {};
    }
    buffer_.assign(chunk, static_cast<std::size_t>(size));
  }
  std::string text = buffer_.substr(0, limit);
  buffer_.erase(0, limit);
  return text;
}

std::string Peer::readExactly(std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) {
    const std::string more = read(bytes - text.size());
    if (more.empty()) {
      break;
    }
    text += more;
  }
  return text;
}

std::string Peer::readRequest() {
  std::string request;
  while (request.size() < 4 ||
         request.compare(request.size() - 4, 4, "\r\n\r\n") != 0) {
    const std::string byte = read(1);
    if (byte.empty()) {
      return {};
    }
    request += byte;
  }
  constexpr std::string_view kLength = "Content-Length: ";
  const std::size_t length = request.find(kLength);
  if (length == std::string::npos) {
    return request;
  }
  return request + readExactly(std::strtoul(
                       request.c_str() + length + kLength.size(), nullptr, 10));
}

bool Peer::write(std::string_view text) {
  while (!text.empty()) {
    if (!waitFor(POLLOUT, -1)) {
      return false;
    }
    const std::string_view chunk = text.substr(0, 16384);
    const auto size =
        tls_ != nullptr
            ? SSL_write(tls_, chunk.data(), static_cast<int>(chunk.size()))
            : static_cast<int>(
                  send(socket_, chunk.data(), chunk.size(), MSG_NOSIGNAL));
    if (size <= 0) {
      return false;
    }
    text.remove_prefix(static_cast<std::size_t>(size));
  }
  return true;
}

void Peer::hang() {
  while (!read(16384).empty()) {
  }
}

bool Peer::pause(std::chrono::milliseconds time) {
  pollfd watched{stop_, POLLIN, 0};
  return poll(&watched, 1, static_cast<int>(time.count())) == 0;
}

bool Peer::resumed() const {
  return tls_ != nullptr && SSL_session_reused(tls_) == 1;
}

std::string Peer::protocol() const {
  const unsigned char* chosen = nullptr;
  unsigned int size = 0;
  if (tls_ != nullptr) {
    SSL_get0_alpn_selected(tls_, &chosen, &size);
  }
  return {reinterpret_cast<const char*>(chosen), size};
}

void Peer::close() {
  if (tls_ != nullptr) {
    SSL_shutdown(tls_);
  }
  shutdown(socket_, SHUT_WR);
  hang();
}

void Peer::reset() const {
  const linger now{1, 0};
  setsockopt(socket_, SOL_SOCKET, SO_LINGER, &now, sizeof now);
}

ScriptedServer::ScriptedServer(Script script, const TlsWish& tls)
    : script_(std::move(script)),
      protocols_(static_cast<char>(tls.protocol.size()) + tls.protocol) {
  if (!tls.identity.certificate.empty()) {
    context_.reset(SSL_CTX_new(TLS_server_method()));
    SSL_CTX* context = context_.get();
    require(context != nullptr);
    // Lets tests offer what is too old for anyone else.
    require(SSL_CTX_set_cipher_list(context, "ALL:@SECLEVEL=0") == 1);
    SSL_CTX_set_min_proto_version(context, tls.lowestVersion);
    SSL_CTX_set_max_proto_version(context, tls.highestVersion);
    useIdentity(context, tls.identity);
    if (!tls.protocol.empty()) {
      SSL_CTX_set_alpn_select_cb(context, chooseProtocol, &protocols_);
    }
  }
  stop_ = eventfd(0, EFD_CLOEXEC);
  listener_ = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  require(stop_ >= 0 && listener_ >= 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  require(bind(listener_, generic, size) == 0 && listen(listener_, 64) == 0 &&
          getsockname(listener_, generic, &size) == 0);
  port_ = ntohs(address.sin_port);
  acceptor_ = std::thread([this] { accept(); });
}

ScriptedServer::~ScriptedServer() {
  const std::uint64_t one = 1;
  static_cast<void>(write(stop_, &one, sizeof one));
  acceptor_.join();
  for (std::thread& thread : threads_) {
    thread.join();
  }
  ::close(listener_);
  ::close(stop_);
}

void ScriptedServer::accept() {
  while (true) {
    pollfd watched[] = {{listener_, POLLIN, 0}, {stop_, POLLIN, 0}};
    if (poll(watched, 2, -1) < 0 || watched[1].revents != 0) {
      return;
    }
    const int socket = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (socket < 0) {
      continue;
    }
    ++connections_;
    const std::lock_guard<std::mutex> lock(mutex_);
    threads_.emplace_back([this, socket] { serve(socket); });
  }
}

void ScriptedServer::serve(int socket) {
  // A handshake or a write that the client does not answer must not hold the
  // test for ever.
  const timeval patience{5, 0};
  setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
  SSL* tls = nullptr;
  bool ready = true;
  if (context_ != nullptr) {
    tls = SSL_new(context_.get());
    SSL_set_fd(tls, socket);
    ready = SSL_accept(tls) == 1;
  }
  if (ready) {
    Peer peer(socket, stop_, tls);
    script_(peer);
  }
  SSL_free(tls);
  ::close(socket);
}

TlsWish tlsWith(bmc::Identity identity) {
  TlsWish tls;
  tls.identity = std::move(identity);
  return tls;
}

ScriptedServer::Script answering(
    std::function<std::string(const std::string& request)> answer) {
  return [answer = std::move(answer)](Peer& peer) {
    while (true) {
      const std::string request = peer.readRequest();
      if (request.empty()) {
        return;
      }
      const std::string text = answer(request);
      if (text.empty() || !peer.write(text)) {
        return;
      }
    }
  };
}

std::string httpAnswer(int status, std::string_view body,
                       std::string_view headers) {
  return "HTTP/1.1 " + std::to_string(status) +
         " Text\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
         std::string(headers) + "\r\n" + std::string(body);
}
