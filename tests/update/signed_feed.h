#pragma once

#include <gtest/gtest.h>
#include <sodium.h>

#include <array>
#include <string>

#include "update/appcast.h"

namespace hushpane::update::tests {

inline std::string base64(const unsigned char* bytes, std::size_t size) {
  std::string text(sodium_base64_encoded_len(size, sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(text.data(), text.size(), bytes, size, sodium_base64_VARIANT_ORIGINAL);
  text.pop_back();
  return text;
}

inline AppcastEntry unsignedEntry(const std::string& version, const std::string& link,
                                  const std::string& shortVersion = "") {
  return {.version = version, .shortVersion = shortVersion, .link = link, .minimumVersion = "", .signature = ""};
}

// A pair of keys that is the same in every run.
class Signer {
 public:
  explicit Signer(unsigned char seed = 1) {
    std::array<unsigned char, crypto_sign_SEEDBYTES> bytes{};
    bytes.fill(seed);
    EXPECT_GE(sodium_init(), 0);
    crypto_sign_seed_keypair(public_.data(), secret_.data(), bytes.data());
  }

  std::string publicKey() const { return base64(public_.data(), public_.size()); }

  AppcastEntry sign(AppcastEntry entry) const {
    const auto text = signedText(entry);
    std::array<unsigned char, crypto_sign_BYTES> signature{};
    crypto_sign_detached(signature.data(), nullptr, reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                         secret_.data());
    entry.signature = base64(signature.data(), signature.size());
    return entry;
  }

 private:
  std::array<unsigned char, crypto_sign_PUBLICKEYBYTES> public_{};
  std::array<unsigned char, crypto_sign_SECRETKEYBYTES> secret_{};
};

inline std::string item(const AppcastEntry& entry) {
  return "<item><title>New</title><link> " + entry.link + " </link>" +
         (entry.minimumVersion.empty() ? "" : "<x:minimumVersion>" + entry.minimumVersion + "</x:minimumVersion>") +
         "<enclosure url='https://example.org/a.deb' length='1' x:version='" + entry.version +
         (entry.shortVersion.empty() ? "" : "' x:shortVersionString='" + entry.shortVersion) + "' x:edSignature='" +
         entry.signature + "'/></item>";
}

inline std::string feedOf(const std::string& items) {
  return "\xef\xbb\xbf<?xml version='1.0' encoding='utf-8'?>\n<!-- versions --><rss version='2.0' xmlns:x='urn:x'>"
         "<channel><title>Hushpane</title><link>https://example.org/other</link>" +
         items + "</channel></rss>\n";
}

}  // namespace hushpane::update::tests
