// SPDX-License-Identifier: MIT

#include "gateway/ember/peer_network.h"

#include <string_view>
#include <vector>

namespace ember {

namespace {

constexpr std::size_t kGroups = 8;

// "2001:db8" as its groups; none for an empty text.
std::vector<std::string> GroupsOf(std::string_view text) {
  std::vector<std::string> groups;
  while (!text.empty()) {
    const auto colon = text.find(':');
    groups.emplace_back(text.substr(0, colon));
    text = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
  }
  return groups;
}

}  // namespace

std::string NetworkOf(const std::string& address) {
  if (address.find(':') == std::string::npos) return address;
  const std::string_view text = std::string_view(address).substr(0, address.find('%'));
  const auto gap = text.find("::");
  std::vector<std::string> groups = GroupsOf(text.substr(0, gap));
  if (gap != std::string_view::npos) {
    const std::vector<std::string> behind = GroupsOf(text.substr(gap + 2));
    while (groups.size() + behind.size() < kGroups) groups.emplace_back("0");
    groups.insert(groups.end(), behind.begin(), behind.end());
  }
  groups.resize(kGroups / 2);
  std::string network;
  for (const std::string& group : groups) network += (network.empty() ? "" : ":") + group;
  return network;
}

bool IsLoopback(const std::string& address) {
  return address == "::1" || address.starts_with("127.");
}

}  // namespace ember
