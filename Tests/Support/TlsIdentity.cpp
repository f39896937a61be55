#include "Tests/Support/TlsIdentity.h"

#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace tests {
namespace {

using Key = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using Certificate = std::unique_ptr<X509, decltype(&X509_free)>;

void addExtension(X509* certificate, int kind, const char* value) {
    X509_EXTENSION* const extension = X509V3_EXT_conf_nid(nullptr, nullptr, kind, value);
    X509_add_ext(certificate, extension, -1);
    X509_EXTENSION_free(extension);
}

Certificate selfSigned(EVP_PKEY* key) {
    Certificate certificate(X509_new(), X509_free);
    X509* const raw = certificate.get();
    X509_set_version(raw, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(raw), 1);
    constexpr long day = 24 * 60 * 60;
    X509_gmtime_adj(X509_getm_notBefore(raw), -day);
    X509_gmtime_adj(X509_getm_notAfter(raw), day);
    X509_set_pubkey(raw, key);
    X509_NAME* const name = X509_get_subject_name(raw);
    const unsigned char text[] = "a test's server";
    X509_NAME_add_entry_by_txt(name, "CN", MBSTRING_ASC, text, sizeof text - 1, -1, 0);
    X509_set_issuer_name(raw, name);
    addExtension(raw, NID_basic_constraints, "critical,CA:TRUE");
    addExtension(raw, NID_subject_alt_name, "IP:127.0.0.1");
    if (X509_sign(raw, key, EVP_sha256()) == 0)
        throw std::runtime_error("no certificate can be made");
    return certificate;
}

void write(X509* certificate, const std::string& path) {
    const std::unique_ptr<std::FILE, decltype(&std::fclose)> file(std::fopen(path.c_str(), "wb"),
                                                                  &std::fclose);
    if (!file || PEM_write_X509(file.get(), certificate) == 0)
        throw std::runtime_error("cannot write " + path);
}

} // namespace

TlsIdentity::TlsIdentity() : context_(SSL_CTX_new(TLS_server_method())) {
    // A client that leaves must not end the process; the library writes without saying so.
    std::signal(SIGPIPE, SIG_IGN);
    const Key key(EVP_EC_gen("P-256"), EVP_PKEY_free);
    const Certificate certificate = selfSigned(key.get());
    write(certificate.get(), certificateFile());
    if (SSL_CTX_use_certificate(context_, certificate.get()) != 1 ||
        SSL_CTX_use_PrivateKey(context_, key.get()) != 1)
        throw std::runtime_error("no server can use the certificate");
}

TlsIdentity::~TlsIdentity() {
    SSL_CTX_free(context_);
}

} // namespace tests
