// SPDX-License-Identifier: MIT

#ifndef MODEL_SYSTEM_MODEL_H_
#define MODEL_SYSTEM_MODEL_H_

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "model/one_based.h"

namespace model {

// Passed as a station, channel or client slot: "all of them".
inline constexpr int kAll = 9999;

// The largest matrix: a channel number has eight bits on the wire.
inline constexpr int kMaxChannelCount = 256;

// Gains and tally points, whatever the size of the matrix.
inline constexpr int kLevelCount = 64;

// The gain step of an input before the switcher has reported one.
inline constexpr std::int16_t kInitialGain = 64;

// What every view, the serial link and the panel gateway share.  There is one, made by the
// program and passed by reference; everything runs on the user-interface thread, so there are
// no accessors and no locks.
//
// Stations and channels count from 1 here; InputGains and QdvTally are indexed from 0.
struct SystemModel {
  // Counts, from the database.  ButtonCount, ChkBoxCount, OptoCount and RelayCount are fixed:
  // the system is built for these, whatever the database says.
  std::int16_t StationCount = 0;
  std::int16_t ChannelCount = 0;  // 0..256
  std::int16_t LabelCount = 0;
  std::int16_t InCount = 0;
  std::int16_t OutCount = 0;
  std::int16_t ButtonCount = 0;
  std::int16_t ChkBoxCount = 0;
  std::int16_t OptoCount = 0;
  std::int16_t RelayCount = 0;

  // The switcher's state as it last reported it.
  OneBasedMatrix<std::uint8_t> CrosspointMap;          // (output, input), 1 = crosspoint made
  OneBasedArray<std::uint8_t> ChannelStatus;           // per output: 0 ordinary, 1 priority
  std::array<std::int16_t, kLevelCount> InputGains{};  // gain steps 0..127
  std::array<std::int16_t, kLevelCount> QdvTally{};    // 0 = not responding

  // [0] connected, [1] answered since the last keep-alive poll, [2] unanswered polls in a row.
  std::array<std::uint8_t, 3> LinkStatus{};

  // Settings.  AppPath, in UTF-8, ends in one backslash on every platform: it is what is shown
  // and stored, and no path to open a file by.
  std::string AppPath;
  std::int16_t ComPort = 1;           // 1..4
  std::int16_t DownloadInterval = 0;  // milliseconds
  std::int32_t IpPort = 1250;
  bool SoftpanelSupport = true;
  std::int16_t DemoMode = 0;  // 1: the map view draws its own takes

  bool TallyViewOpen = false;
  std::int16_t DownloadMode = 0;  // 0 everything, -1 button data only

  bool XmapComplete = false;    // the last output's map row has arrived
  bool TallySeen = false;       // a tally message has arrived in this run
  bool RetrieveActive = false;  // a retrieval is running
  bool SendBusy = false;        // a message is being written to the switcher

  // Sets the counts that do not come from the database, and DownloadInterval (50, whatever was
  // configured), and clears the link's flags.
  void ApplyFixedValues();

  // Sizes CrosspointMap and ChannelStatus for ChannelCount and clears them, discarding what was
  // there.  REQUIRES: 0 <= ChannelCount <= kMaxChannelCount
  void AllocateMap();

  // No tally point responding, every gain at kInitialGain.
  void ResetLevels();
};

// The AppPath of a folder (UTF-8): the folder and one backslash, unless it ends in one.
std::string ToAppPath(std::string_view folder);

}  // namespace model

#endif  // MODEL_SYSTEM_MODEL_H_
