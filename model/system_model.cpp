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

std::string ToAppPath(std::string_view folder) {
  std::string path(folder);
  if (path.empty() || path.back() != '\\') path += '\\';
  return path;
}

}  // namespace model
