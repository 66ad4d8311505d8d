// SPDX-License-Identifier: MIT

#include "gateway/address_list.h"

#include <algorithm>
#include <charconv>

namespace gateway {

namespace {

constexpr std::string_view kBetween = ", \t";

std::optional<int> ParseBits(std::string_view text, int most) {
  int bits = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), bits);
  if (error != std::errc() || end != text.data() + text.size() || bits < 0 || bits > most) {
    return std::nullopt;
  }
  return bits;
}

}  // namespace

// The toolkit takes more for addresses of IPv4 than are: "::", too.
QHostAddress Unmapped(const QHostAddress& address) {
  if (address.protocol() != QAbstractSocket::IPv6Protocol) return address;
  static const QHostAddress kMapped(QStringLiteral("::ffff:0:0"));
  return address.isInSubnet(kMapped, 96) ? QHostAddress(address.toIPv4Address()) : address;
}

// The toolkit completes addresses of fewer numbers, which is not what was meant.
std::optional<QHostAddress> ParseAddress(std::string_view text) {
  const bool isIpv6 = text.find(':') != std::string_view::npos;
  if (!isIpv6 && std::count(text.begin(), text.end(), '.') != 3) return std::nullopt;
  QHostAddress address;
  if (!address.setAddress(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())))) {
    return std::nullopt;
  }
  return Unmapped(address);
}

std::optional<AddressList> AddressList::Parse(std::string_view text) {
  std::vector<Network> networks;
  while (true) {
    const auto begin = text.find_first_not_of(kBetween);
    if (begin == std::string_view::npos) break;
    text.remove_prefix(begin);
    const std::string_view item = text.substr(0, text.find_first_of(kBetween));
    text.remove_prefix(item.size());
    const auto slash = item.find('/');
    const std::optional<QHostAddress> address = ParseAddress(item.substr(0, slash));
    if (!address) return std::nullopt;
    const int all = address->protocol() == QAbstractSocket::IPv4Protocol ? 32 : 128;
    std::optional<int> bits = all;
    if (slash != std::string_view::npos) bits = ParseBits(item.substr(slash + 1), all);
    if (!bits) return std::nullopt;
    networks.emplace_back(*address, *bits);
  }
  if (networks.empty()) return std::nullopt;
  AddressList list;
  list.networks_ = std::move(networks);
  return list;
}

bool AddressList::Contains(const std::string& address) const {
  if (!networks_) return true;
  const std::optional<QHostAddress> parsed = ParseAddress(address);
  return parsed && std::any_of(networks_->begin(), networks_->end(),
                               [&](const Network& network) { return parsed->isInSubnet(network); });
}

}  // namespace gateway
