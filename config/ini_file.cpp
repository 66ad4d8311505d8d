// SPDX-License-Identifier: MIT

#include "config/ini_file.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "files/whole_file.h"

namespace config {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Lower(x) == Lower(y); });
}

// The name in a line "[name]"; false for any other line.
bool IsSection(std::string_view line, std::string_view* name) {
  line = Trimmed(line);
  if (line.starts_with(kByteOrderMark)) line = Trimmed(line.substr(kByteOrderMark.size()));
  if (!line.starts_with('[')) return false;
  line.remove_prefix(1);
  *name = Trimmed(line.substr(0, line.find(']')));
  return true;
}

std::string_view WithoutQuotes(std::string_view value) {
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
      value.back() == value.front()) {
    return value.substr(1, value.size() - 2);
  }
  return value;
}

std::string_view ValueOf(std::string_view line) {
  return WithoutQuotes(Trimmed(line.substr(line.find('=') + 1)));
}

model::Status StatusOf(const files::Outcome& outcome) {
  return outcome.ok() ? model::Status() : model::Status(model::kFileAccess, outcome.text);
}

}  // namespace

IniFile::IniFile(std::string_view text) {
  for (std::size_t start = 0; start < text.size();) {
    const auto end = text.find('\n', start);
    const auto next = end == std::string_view::npos ? text.size() : end + 1;
    lines_.emplace_back(text.substr(start, next - start));
    start = next;
  }
  if (!lines_.empty() && lines_[0].ends_with('\n') && !lines_[0].ends_with("\r\n")) {
    lineEnd_ = "\n";
  }
}

model::Status IniFile::Load(const std::filesystem::path& path, IniFile* file) {
  *file = IniFile();
  std::string bytes;
  const files::Outcome read = files::ReadWhole(path, kLargestIniFile, &bytes);
  if (read.error == std::errc::no_such_file_or_directory) return {};
  if (read.ok()) *file = IniFile(bytes);
  return StatusOf(read);
}

IniFile::Body IniFile::FindSection(std::string_view section) const {
  const int count = static_cast<int>(lines_.size());
  std::string_view name;
  for (int i = 0; i < count; ++i) {
    if (!IsSection(lines_[static_cast<std::size_t>(i)], &name) || !SameName(name, section))
      continue;
    int end = i + 1;
    while (end < count && !IsSection(lines_[static_cast<std::size_t>(end)], &name)) ++end;
    return {.first = i + 1, .end = end};
  }
  return {};
}

int IniFile::FindKey(const Body& body, std::string_view key) const {
  for (int i = body.first; i < body.end; ++i) {
    const std::string_view line = lines_[static_cast<std::size_t>(i)];
    if (Trimmed(line).starts_with(';')) continue;
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) continue;
    if (SameName(Trimmed(line.substr(0, equals)), key)) return i;
  }
  return -1;
}

std::string IniFile::Value(std::string_view section, std::string_view key) const {
  const Body body = FindSection(section);
  if (body.first < 0) return {};
  const int line = FindKey(body, key);
  if (line < 0) return {};
  return std::string(ValueOf(lines_[static_cast<std::size_t>(line)]));
}

std::vector<IniFile::Line> IniFile::Lines() const {
  std::vector<Line> lines;
  std::string_view section;
  for (const std::string_view line : lines_) {
    if (IsSection(line, &section)) continue;
    const std::string_view content = Trimmed(line);
    if (content.empty() || content.starts_with(';')) continue;
    const auto equals = content.find('=');
    const bool hasEquals = equals != std::string_view::npos;
    lines.push_back({.section = std::string(section),
                     .entry = {.key = std::string(Trimmed(content.substr(0, equals))),
                               .value = hasEquals ? std::string(ValueOf(content)) : std::string()},
                     .hasEquals = hasEquals});
  }
  return lines;
}

std::vector<IniFile::Entry> IniFile::Entries(std::string_view section) const {
  std::vector<Entry> entries;
  for (Line& line : Lines()) {
    if (!line.section.empty() && SameName(line.section, section)) {
      entries.push_back(std::move(line.entry));
    }
  }
  return entries;
}

std::vector<std::string> IniFile::Sections() const {
  std::vector<std::string> sections;
  for (const std::string_view line : lines_) {
    std::string_view name;
    if (IsSection(line, &name)) sections.emplace_back(name);
  }
  return sections;
}

void IniFile::SetValue(std::string_view section, std::string_view key, std::string_view value) {
  Body body = FindSection(section);
  if (body.first < 0) {
    const int end = static_cast<int>(lines_.size());
    InsertLine(end, "[" + std::string(section) + "]");
    body = {.first = end + 1, .end = end + 1};
  }
  const int at = FindKey(body, key);
  if (at < 0) {
    // Blank lines at the end of a section keep it apart from the next one.
    int end = body.end;
    while (end > body.first && Trimmed(lines_[static_cast<std::size_t>(end - 1)]).empty()) --end;
    InsertLine(end, std::string(key) + "=" + std::string(value));
    return;
  }
  std::string& line = lines_[static_cast<std::size_t>(at)];
  if (ValueOf(line) == value) return;
  const auto valueStart = std::min(line.find_first_not_of(" \t", line.find('=') + 1), line.size());
  const auto contentEnd = std::min(line.find_last_not_of("\r\n") + 1, line.size());
  line.replace(std::min(valueStart, contentEnd), contentEnd - std::min(valueStart, contentEnd),
               value);
}

void IniFile::InsertLine(int at, std::string_view content) {
  if (at > 0 && !lines_[static_cast<std::size_t>(at - 1)].ends_with('\n')) {
    lines_[static_cast<std::size_t>(at - 1)] += lineEnd_;
  }
  lines_.insert(lines_.begin() + at, std::string(content) + lineEnd_);
}

std::string IniFile::Text() const {
  std::string text;
  for (const std::string& line : lines_) text += line;
  return text;
}

model::Status IniFile::Save(const std::filesystem::path& path) const {
  const std::string text = Text();
  std::string present;
  if (files::ReadWhole(path, kLargestIniFile, &present).ok() && present == text) return {};
  return StatusOf(files::Replace(path, text));
}

}  // namespace config
