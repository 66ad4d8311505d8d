// SPDX-License-Identifier: MIT

#include "bench/figures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string_view>
#include <utility>

namespace bench {

namespace {

constexpr char kOk[] = "ok";
constexpr char kMissed[] = "missed";
constexpr char kNoResult[] = "no result";

// Three significant digits, without an exponent.
std::string NumberText(double value) {
  if (value == 0) return "0";
  const int magnitude = static_cast<int>(std::floor(std::log10(std::abs(value))));
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", std::max(0, 2 - magnitude), value);
  return text;
}

// A limit as it was declared.
std::string LimitText(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

}  // namespace

Figures::Figures(int* argc, char** argv) {
  constexpr std::string_view kFile = "--figures=";
  const auto isOwn = [this, kFile](const char* argument) {
    const std::string_view word = argument;
    if (word == "--quick") {
      quick_ = true;
    } else if (word.starts_with(kFile)) {
      file_ = word.substr(kFile.size());
    } else {
      return false;
    }
    return true;
  };
  char** const end = std::remove_if(argv + 1, argv + *argc, isOwn);
  *argc = static_cast<int>(end - argv);
  *end = nullptr;
}

void Figures::Add(Figure figure) {
  if (std::isfinite(figure.value) && (!figure.other || figure.other->value > 0)) {
    lines_.push_back(LineOf(figure));
  } else {
    AddMissing(figure.what, "nothing was measured");
  }
}

void Figures::AddMissing(const std::string& what, const std::string& why) {
  std::fprintf(stderr, "%s: %s\n", what.c_str(), why.c_str());
  Line line;
  line.what = what;
  line.verdict = kNoResult;
  lines_.push_back(std::move(line));
}

Figures::Line Figures::LineOf(const Figure& figure) {
  Line line;
  line.what = figure.what;
  line.value = NumberText(figure.value);
  line.unit = figure.unit;
  bool held = true;
  const auto holdAgainst = [&](double value, double limit, const std::string& words) {
    held = held && value <= limit;
    if (!line.limit.empty()) line.limit += ", ";
    line.limit += words;
    line.verdict = held ? kOk : kMissed;
  };
  if (figure.limit) {
    holdAgainst(figure.value, *figure.limit, LimitText(*figure.limit) + " " + figure.unit);
  }
  if (figure.other) {
    const double ratio = figure.value / figure.other->value;
    line.otherName = figure.other->name;
    line.otherValue = NumberText(figure.other->value);
    line.ratio = NumberText(ratio);
    if (figure.ratioLimit) {
      holdAgainst(ratio, *figure.ratioLimit, "ratio " + LimitText(*figure.ratioLimit));
    }
  }
  return line;
}

int Figures::Finish() const {
  std::printf("\n");
  int result = 0;
  for (const Line& line : lines_) {
    if (line.verdict == kMissed) result = std::max(result, 1);
    if (line.verdict == kNoResult) result = 2;
    std::string text = line.what + ":";
    if (!line.value.empty()) text += " " + line.value + " " + line.unit;
    if (!line.otherName.empty()) {
      text +=
          "; " + line.otherName + " " + line.otherValue + " " + line.unit + ", ratio " + line.ratio;
    }
    if (!line.limit.empty()) text += "; limit " + line.limit;
    if (!line.verdict.empty()) text += (line.value.empty() ? " " : ": ") + line.verdict;
    std::printf("%s\n", text.c_str());
  }
  return Append() ? result : 2;
}

bool Figures::Append() const {
  if (file_.empty()) return true;
  std::ofstream file(file_, std::ios::app);
  for (const Line& line : lines_) {
    file << line.what << '\t' << line.value << '\t' << line.unit << '\t' << line.otherName << '\t'
         << line.otherValue << '\t' << line.ratio << '\t' << line.limit << '\t' << line.verdict
         << '\n';
  }
  file.close();
  if (file) return true;
  std::fprintf(stderr, "%s cannot be written\n", file_.c_str());
  return false;
}

}  // namespace bench
