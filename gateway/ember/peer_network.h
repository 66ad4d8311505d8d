// SPDX-License-Identifier: MIT

#ifndef GATEWAY_EMBER_PEER_NETWORK_H_
#define GATEWAY_EMBER_PEER_NETWORK_H_

#include <string>

namespace ember {

// Who counts as one when connections are counted: an address of IPv4 ("192.0.2.7"), and the first
// half of one of IPv6 ("2001:db8:0:1"), of whose second half any computer may have as many as it
// likes.
std::string NetworkOf(const std::string& address);

// Whether it is an address of the computer itself.
bool IsLoopback(const std::string& address);

}  // namespace ember

#endif  // GATEWAY_EMBER_PEER_NETWORK_H_
