#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <string>

struct ssl_ctx_st;

namespace tests {

/// A key and a certificate for 127.0.0.1, made on the spot, that its own key has signed.
class TlsIdentity {
public:
    TlsIdentity();
    ~TlsIdentity();
    TlsIdentity(const TlsIdentity&) = delete;
    TlsIdentity& operator=(const TlsIdentity&) = delete;

    /// Of a server's connections.
    [[nodiscard]] ssl_ctx_st* context() const { return context_; }
    /// In PEM.
    [[nodiscard]] std::string certificateFile() const { return folder_.pathOf("certificate.pem"); }

private:
    TemporaryFolder folder_;
    ssl_ctx_st* context_;
};

} // namespace tests
