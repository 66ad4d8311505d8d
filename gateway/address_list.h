// SPDX-License-Identifier: MIT

#ifndef GATEWAY_ADDRESS_LIST_H_
#define GATEWAY_ADDRESS_LIST_H_

#include <QHostAddress>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gateway {

// An address of IPv4 that stands as one of IPv6 (::ffff:192.0.2.7) as that of IPv4; any other as it
// is.
QHostAddress Unmapped(const QHostAddress& address);

// An address as it is written: "192.0.2.7", "::1".  Nothing for anything else, such as a name or
// the first numbers of an address.  One of IPv4 that stands as one of IPv6 is that of IPv4.
std::optional<QHostAddress> ParseAddress(std::string_view text);

// Addresses and networks, for saying who is let in.
class AddressList {
 public:
  // Everyone.
  AddressList() = default;

  // Reads "192.0.2.7, 10.1.0.0/16 2001:db8::/32", with commas, blanks or both between.  Nothing
  // when it is empty or one of them is no address and no network.
  static std::optional<AddressList> Parse(std::string_view text);

  // Whether the address, in its usual form, is one of these.
  bool Contains(const std::string& address) const;

 private:
  using Network = std::pair<QHostAddress, int>;  // and the bits of it that count

  std::optional<std::vector<Network>> networks_;  // nothing stands for everyone
};

}  // namespace gateway

#endif  // GATEWAY_ADDRESS_LIST_H_
