// SPDX-License-Identifier: MIT

#ifndef TESKPANEL_PRINTER_H_
#define TESKPANEL_PRINTER_H_

#include <string>
#include <string_view>

#include "tools/teskpanel/messages.h"

namespace teskpanel {

// Puts what the panel learns into lines: text for people, or one JSON object a line for scripts.
//
// The objects have an "event", "row", "label" and so on, and members as in the operations below.
// Characters that are not printable are escaped in both forms.
class Printer {
 public:
  explicit Printer(bool json) : json_(json) {}

  // Whether a line is worth printing when nothing was known before: for people an output that
  // hears nothing and a button that does nothing are not.
  bool Shows(const MapRow& row) const;
  bool Shows(const Button& button) const;

  // A line each; outputs, inputs, stations and buttons count from 1.

  // The inputs that an output hears now.
  void Row(const MapRow& row);
  // The label of a station, for the output or for the input.
  void LabelText(LabelKind kind, const Label& label);
  // What button `number` of a station does.
  void ButtonProgram(int station, int number, const Button& button);
  // A crosspoint that is there now, or is gone.
  void Take(int output, int input, bool made);
  // The console was reached at `where`; `linkUp`: the switcher is connected to it.
  void Connected(std::string_view where, bool linkUp);
  // The console is out of reach; it is tried again in so many milliseconds.
  void Disconnected(std::string_view reason, int retryMilliseconds);
  // The console's connection to the switcher came or went.
  void Link(bool up);

  // A line for people that says how much there was.
  void Summary(std::string_view text);

  // What has been printed since the last call.
  std::string TakeText();

 private:
  void PrintLine(std::string_view line);

  const bool json_;
  std::string text_;
};

}  // namespace teskpanel

#endif  // TESKPANEL_PRINTER_H_
