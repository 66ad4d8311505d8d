// SPDX-License-Identifier: MIT

#include "model/system_model.h"

namespace model {

void SystemModel::ApplyFixedValues() {
  ButtonCount = 32;
  ChkBoxCount = 64;
  OptoCount = 64;
  RelayCount = 64;
  DownloadInterval = 50;
  XmapComplete = false;
  TallySeen = false;
  RetrieveActive = false;
  SendBusy = false;
}

void SystemModel::AllocateMap() {
  ChannelStatus = OneBasedArray<std::uint8_t>(ChannelCount);
  CrosspointMap = OneBasedMatrix<std::uint8_t>(ChannelCount);
}

void SystemModel::ResetLevels() {
  QdvTally.fill(0);
  InputGains.fill(kInitialGain);
}

std::filesystem::path SystemModel::FilePath(std::string_view fileName) const {
  std::string folder = AppPath;
  if (!folder.empty() && folder.back() == '\\') folder.pop_back();
  if (!folder.empty() && folder.back() == ':') folder += '/';  // "C:" alone is not the root
  return std::filesystem::path(std::u8string(folder.begin(), folder.end())) /
         std::filesystem::path(std::u8string(fileName.begin(), fileName.end()));
}

std::string ToAppPath(std::string_view folder) {
  std::string path(folder);
  if (path.empty() || path.back() != '\\') path += '\\';
  return path;
}

}  // namespace model
