// SPDX-License-Identifier: MIT

#include "tools/teskpanel/printer.h"

#include <nlohmann/json.hpp>
#include <span>
#include <utility>

#include "tools/teskpanel/hex.h"

namespace teskpanel {

namespace {

using Json = nlohmann::ordered_json;

// All characters that are not printable ASCII are escaped.
std::string Line(const Json& event) { return event.dump(-1, ' ', true); }

// Each byte of a label as the character of that number, in UTF-8.
std::string Characters(std::string_view bytes) {
  std::string text;
  for (const char character : bytes) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x80) {
      text += character;
    } else {
      text.append({static_cast<char>(0xC0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))});
    }
  }
  return text;
}

struct ButtonTypeWord {
  int type;
  std::string_view name;
};

constexpr ButtonTypeWord kButtonTypes[] = {
    {kTalkButton, "talk"},         {kListenButton, "listen"}, {kPriorityListenButton, "priority"},
    {kExternalButton, "external"}, {kGroupButton, "group"},   {kInactiveButton, "inactive"},
};

std::string ButtonTypeName(int type) {
  for (const ButtonTypeWord& known : kButtonTypes) {
    if (known.type == type) return std::string(known.name);
  }
  return "type-" + std::to_string(type);
}

std::string_view KindName(LabelKind kind) {
  return kind == LabelKind::Station ? "output" : "input";
}

std::string List(std::span<const int> numbers) {
  std::string text;
  for (const int number : numbers) text += " " + std::to_string(number);
  return text;
}

// In quotes; characters on which a terminal would act are \xHH.
std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 0x20 || byte >= 0x7F) {
      quoted += "\\x" + Hex(byte);
    } else {
      if (character == '"' || character == '\\') quoted += '\\';
      quoted += character;
    }
  }
  return quoted + "\"";
}

std::string_view LinkText(bool up) {
  return up ? "the switcher is connected" : "the switcher is not connected";
}

}  // namespace

bool Printer::Shows(const MapRow& row) const {
  return json_ || !row.inputs.empty() || row.status != 0;
}

bool Printer::Shows(const Button& button) const {
  return json_ || button.type != kInactiveButton || !button.stations.empty();
}

void Printer::Row(const MapRow& row) {
  if (json_) {
    PrintLine(Line({{"event", "row"},
                    {"output", row.output},
                    {"status", row.status},
                    {"inputs", row.inputs}}));
    return;
  }
  std::string line = "output " + std::to_string(row.output) + ":";
  line += row.inputs.empty() ? " nothing" : List(row.inputs);
  if (row.status != 0) line += " (status " + std::to_string(row.status) + ")";
  PrintLine(line);
}

void Printer::LabelText(LabelKind kind, const Label& label) {
  const std::string_view name = KindName(kind);
  if (json_) {
    PrintLine(Line({{"event", "label"},
                    {"kind", name},
                    {"station", label.station},
                    {"text", Characters(label.text)}}));
    return;
  }
  PrintLine(std::string(name) + " " + std::to_string(label.station) + ": " + Quoted(label.text));
}

void Printer::ButtonProgram(int station, int number, const Button& button) {
  if (json_) {
    PrintLine(Line({{"event", "button"},
                    {"station", station},
                    {"button", number},
                    {"type", ButtonTypeName(button.type)},
                    {"first", button.first},
                    {"stations", button.stations}}));
    return;
  }
  std::string line = "station " + std::to_string(station) + " button " + std::to_string(number) +
                     ": " + ButtonTypeName(button.type);
  if (button.first != 0) line += ", first " + std::to_string(button.first);
  if (!button.stations.empty()) line += ", stations" + List(button.stations);
  PrintLine(line);
}

void Printer::Take(int output, int input, bool made) {
  if (json_) {
    PrintLine(Line({{"event", "take"}, {"output", output}, {"input", input}, {"made", made}}));
    return;
  }
  PrintLine("output " + std::to_string(output) + (made ? " hears" : " does not hear") + " input " +
            std::to_string(input));
}

void Printer::Connected(std::string_view where, bool linkUp) {
  if (json_) {
    PrintLine(Line({{"event", "connected"}, {"to", Characters(where)}, {"link", linkUp}}));
    return;
  }
  PrintLine("connected to " + std::string(where) + "; " + std::string(LinkText(linkUp)));
}

void Printer::Disconnected(std::string_view reason, int retryMilliseconds) {
  if (json_) {
    PrintLine(Line({{"event", "disconnected"},
                    {"reason", Characters(reason)},
                    {"retry_ms", retryMilliseconds}}));
    return;
  }
  PrintLine("not connected: " + std::string(reason) + "; next try in " +
            std::to_string(retryMilliseconds) + " ms");
}

void Printer::Link(bool up) {
  PrintLine(json_ ? Line({{"event", "link"}, {"up", up}}) : std::string(LinkText(up)));
}

void Printer::Summary(std::string_view text) {
  if (!json_) PrintLine(text);
}

std::string Printer::TakeText() { return std::exchange(text_, {}); }

void Printer::PrintLine(std::string_view line) {
  text_ += line;
  text_ += '\n';
}

}  // namespace teskpanel
