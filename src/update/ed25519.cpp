#include "update/ed25519.h"

#include <sodium.h>

#include <array>
#include <optional>

namespace hushpane::update {

namespace {

// Nothing when the text is no base64 of exactly that many bytes.
template <std::size_t size>
std::optional<std::array<unsigned char, size>> decode(const std::string& text) {
  std::array<unsigned char, size> bytes{};
  std::size_t length = 0;
  const bool isDecoded = sodium_base642bin(bytes.data(), size, text.data(), text.size(), nullptr, &length, nullptr,
                                           sodium_base64_VARIANT_ORIGINAL) == 0;
  return isDecoded && length == size ? std::optional(bytes) : std::nullopt;
}

}  // namespace

bool isSignedBy(const std::string& publicKey, const std::string& signature, std::string_view text) {
  if (sodium_init() < 0) return false;
  const auto key = decode<crypto_sign_PUBLICKEYBYTES>(publicKey);
  const auto signedBytes = decode<crypto_sign_BYTES>(signature);
  return key && signedBytes &&
         crypto_sign_verify_detached(signedBytes->data(), reinterpret_cast<const unsigned char*>(text.data()),
                                     text.size(), key->data()) == 0;
}

}  // namespace hushpane::update
