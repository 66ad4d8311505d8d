// SPDX-License-Identifier: MIT

#ifndef TESKSIM_SWITCHER_STATE_H_
#define TESKSIM_SWITCHER_STATE_H_

#include <bitset>
#include <cstdint>
#include <string>
#include <vector>

#include "model/one_based.h"
#include "switcher/wire/messages/crosspoint_row.h"
#include "switcher/wire/messages/tally.h"

namespace tesksim {

// How large the system is.
struct SystemSizes {
  int channels = 64;  // a multiple of eight within 8..256
  int stations = 64;  // with buttons; 1..256
  int labels = 128;   // 1..256

  bool operator==(const SystemSizes&) const = default;
};

// What every system has.
inline constexpr int kRelays = 64;
inline constexpr int kButtons = 32;  // of a station
inline constexpr int kOptos = 64;

// Stations that something acts on: bit 0 is station 1.
using Members = std::bitset<256>;

enum class Crosspoint : std::uint8_t {
  Off,
  Ordinary,  // program, sum, listen
  Priority,  // call, priority listen: not interrupted by a call
};

// All numbers of a button, an opto or a tally point are 0..kLargestByte, as they travel.
inline constexpr int kLargestByte = 255;

struct ButtonProgram {
  int type = 0;
  int first = 0;
  Members members;

  bool operator==(const ButtonProgram&) const = default;
};

struct OptoProgram {
  int type = 0;
  int channel = 0;
  int first = 0;
  Members members;

  bool operator==(const OptoProgram&) const = default;
};

// What the simulated switcher holds.  Channels, stations, labels, relays, buttons and optos
// count from 1; gains and tally points are indexed from 0.
struct SwitcherState {
  // Every crosspoint off, every gain at 64 (-36 dB), no tally point responding, and the tables
  // of a console's fresh database (FillDefaultTables).
  // REQUIRES: sizes within their ranges
  explicit SwitcherState(const SystemSizes& sizes);

  const SystemSizes& Sizes() const { return sizes_; }
  int ChannelCount() const { return sizes_.channels; }
  bool HasChannel(int channel) const { return channel >= 1 && channel <= ChannelCount(); }

  // Releases all sources of an output.
  void ClearOutput(int output);

  // The map row of an output as it is reported.  Its status is 1 when any of its crosspoints is
  // a priority one, else 0.
  switcher::CrosspointRow Row(int output) const;

  model::OneBasedMatrix<Crosspoint> crosspoints;  // (output, input)
  std::vector<std::int16_t> gains;                // steps 0..127, one for each channel
  switcher::TallyValues tally{};                  // 0..255, 0 = not responding

  // The tables.  A label is what travels: eight characters of code page 1252, the first of them
  // "{" when the station is hidden.
  model::OneBasedArray<std::string> outLabels;
  model::OneBasedArray<std::string> inLabels;
  model::OneBasedMatrix<std::uint8_t> inhibits;       // (output, input), 1 = inhibited
  model::OneBasedArray<std::bitset<kRelays>> relays;  // by output; bit 0 is relay 1
  model::OneBasedArray<model::OneBasedArray<ButtonProgram>> buttons;  // by station, by button
  model::OneBasedArray<OptoProgram> optos;

 private:
  SystemSizes sizes_;
};

// Writes the tables that a console's fresh database has.  Labels: "Sta. 001" and so on for the
// stations, "{xt. 001" ("Ext. 001", hidden) and so on behind them, inputs "Inpt 001" numbered
// alike.  Each output is inhibited from itself; no relay is assigned; button b of every station
// talks (type 0) to station b; opto i is inactive (type 254) with channel, first station and
// only member i.
void FillDefaultTables(SwitcherState& state);

}  // namespace tesksim

#endif  // TESKSIM_SWITCHER_STATE_H_
