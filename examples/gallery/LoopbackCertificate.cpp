// SPDX-License-Identifier: MIT
#include "LoopbackCertificate.h"

#include <QRandomGenerator>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <memory>

namespace {

template <auto release>
struct Releaser
{
    template <typename T>
    void operator()(T *object) const
    {
        release(object);
    }
};
using Key = std::unique_ptr<EVP_PKEY, Releaser<&EVP_PKEY_free>>;
using Certificate = std::unique_ptr<X509, Releaser<&X509_free>>;
using Extension = std::unique_ptr<X509_EXTENSION, Releaser<&X509_EXTENSION_free>>;
using Memory = std::unique_ptr<BIO, Releaser<&BIO_free>>;

bool addExtension(X509 *certificate, int kind, const char *value)
{
    const Extension extension(X509V3_EXT_conf_nid(nullptr, nullptr, kind, value));
    return extension && X509_add_ext(certificate, extension.get(), -1) == 1;
}

bool fill(X509 *certificate, EVP_PKEY *key, const QByteArray &names)
{
    constexpr long validity = 24L * 60 * 60; // seconds
    constexpr long clockError = 60L * 60;
    X509_NAME *const subject = X509_get_subject_name(certificate);
    const quint64 number = QRandomGenerator::system()->generate64();
    // Also a part of the name, which must differ between certificates that are trusted together.
    const QByteArray name = "Loopback " + QByteArray::number(number, 16);
    return X509_set_version(certificate, X509_VERSION_3) == 1
           && ASN1_INTEGER_set_uint64(X509_get_serialNumber(certificate), number)
           && X509_gmtime_adj(X509_getm_notBefore(certificate), -clockError)
           && X509_gmtime_adj(X509_getm_notAfter(certificate), validity)
           && X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_ASC,
                                         reinterpret_cast<const unsigned char *>(name.data()),
                                         int(name.size()), -1, 0)
                      == 1
           && X509_set_issuer_name(certificate, subject) == 1
           && X509_set_pubkey(certificate, key) == 1
           && addExtension(certificate, NID_basic_constraints, "critical,CA:TRUE")
           && addExtension(certificate, NID_subject_alt_name, names.constData())
           && X509_sign(certificate, key, EVP_sha256()) > 0;
}

QByteArray content(BIO *memory)
{
    char *bytes = nullptr;
    const long length = BIO_get_mem_data(memory, &bytes);
    return { bytes, length };
}

} // namespace

LoopbackCertificate LoopbackCertificate::make(const QByteArray &names)
{
    const Key key(EVP_EC_gen("P-256"));
    const Certificate certificate(X509_new());
    const Memory certificateText(BIO_new(BIO_s_mem()));
    const Memory keyText(BIO_new(BIO_s_mem()));
    const bool isMade = key && certificate && certificateText && keyText
                        && fill(certificate.get(), key.get(), names)
                        && PEM_write_bio_X509(certificateText.get(), certificate.get()) == 1
                        && PEM_write_bio_PrivateKey(keyText.get(), key.get(), nullptr, nullptr, 0,
                                                    nullptr, nullptr)
                                   == 1;
    if (!isMade)
        return LoopbackCertificate();
    return { QSslCertificate(content(certificateText.get())),
             QSslKey(content(keyText.get()), QSsl::Ec) };
}
