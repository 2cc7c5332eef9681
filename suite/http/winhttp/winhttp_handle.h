#pragma once

#include <windows.h>
#include <wincrypt.h>
#include <winhttp.h>

#include <memory>
#include <type_traits>

namespace http {

// Owners of what WinHTTP and the system's certificate functions hand out.

template <auto function>
struct HandleDeleter {
  template <typename Handle>
  void operator()(Handle* handle) const {
    static_cast<void>(function(handle));  // Nobody is left to be told.
  }
};

inline BOOL closeStore(void* store) { return CertCloseStore(store, 0); }

using WinhttpHandle = std::unique_ptr<void, HandleDeleter<WinHttpCloseHandle>>;
using CertificateStore = std::unique_ptr<void, HandleDeleter<closeStore>>;
using CertificatePtr =
    std::unique_ptr<const CERT_CONTEXT,
                    HandleDeleter<CertFreeCertificateContext>>;
using ChainPtr = std::unique_ptr<const CERT_CHAIN_CONTEXT,
                                 HandleDeleter<CertFreeCertificateChain>>;
using ChainEngine =
    std::unique_ptr<std::remove_pointer_t<HCERTCHAINENGINE>,
                    HandleDeleter<CertFreeCertificateChainEngine>>;

}  // namespace http
