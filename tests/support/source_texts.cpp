// SPDX-License-Identifier: MIT

#include "tests/support/source_texts.h"

#include <cctype>
#include <regex>

namespace test {

namespace {

bool IsWordCharacter(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool IsLetter(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) != 0 || static_cast<signed char>(c) < 0;
}

class Scanner {
 public:
  explicit Scanner(std::string_view code) : code_(code) {}

  std::vector<SourceText> Scan() {
    while (at_ < code_.size()) {
      if (StartsWith("//")) {
        SkipPast("\n");
      } else if (StartsWith("/*")) {
        SkipPast("*/");
      } else if (StartsWith("#include")) {
        SkipPast("\n");
      } else if (StartsWith("R\"(") && !IsWordCharacter(Before())) {
        ScanRawText();
      } else if (code_[at_] == '"') {
        ScanText();
      } else if (code_[at_] == '\'' && !IsInNumber()) {
        ScanCharacter();
      } else {
        Code(code_[at_++]);
      }
    }
    return std::move(texts_);
  }

 private:
  bool StartsWith(std::string_view what) const { return code_.substr(at_).starts_with(what); }

  char Before() const { return at_ == 0 ? ' ' : code_[at_ - 1]; }

  // What stands before this place is a number: an apostrophe here separates its digits.
  bool IsInNumber() const {
    std::size_t begin = at_;
    while (begin > 0 && (IsWordCharacter(code_[begin - 1]) || code_[begin - 1] == '\'')) --begin;
    return begin < at_ && std::isdigit(static_cast<unsigned char>(code_[begin])) != 0;
  }

  void SkipPast(std::string_view what) {
    const std::size_t end = code_.find(what, at_);
    at_ = end == std::string_view::npos ? code_.size() : end + what.size();
  }

  // What stands between the literals, without blanks; a literal in it is "".
  void Code(char c) {
    if (std::isspace(static_cast<unsigned char>(c)) == 0) between_ += c;
  }

  void ScanCharacter() {
    for (++at_; at_ < code_.size() && code_[at_] != '\''; ++at_) {
      if (code_[at_] == '\\') ++at_;
    }
    ++at_;
    between_ += "''";
  }

  void ScanRawText() {
    at_ += 3;
    const std::size_t end = code_.find(")\"", at_);
    const std::size_t stop = end == std::string_view::npos ? code_.size() : end;
    std::string text(code_.substr(at_, stop - at_));
    at_ = stop + 2;
    Add(std::move(text));
  }

  void ScanText() {
    std::string text;
    for (++at_; at_ < code_.size() && code_[at_] != '"'; ++at_) {
      text += code_[at_] == '\\' ? Escaped() : code_[at_];
    }
    ++at_;
    Add(std::move(text));
  }

  char Escaped() {
    switch (const char c = code_[++at_]) {
      case 'n':
        return '\n';
      case 'r':
        return '\r';
      case 't':
        return '\t';
      case 'x': {
        const int code = std::stoi(std::string(code_.substr(at_ + 1, 2)), nullptr, 16);
        at_ += 2;
        return static_cast<char>(code);
      }
      default:
        return c;
    }
  }

  void Add(std::string text) {
    static const std::regex translates(
        R"re((^|\W)(([tT]r|Text|QT_TR_NOOP)\(|(QT_TRANSLATE_NOOP|translate)\("",)$)re");
    if (between_.empty() && !texts_.empty()) {
      texts_.back().text += text;
      return;
    }
    const std::string before = recent_ + between_;
    texts_.push_back(
        {.text = std::move(text), .translated = std::regex_search(before, translates)});
    recent_ = before.substr(before.size() - std::min<std::size_t>(before.size(), 40)) + "\"\"";
    between_.clear();
  }

  std::string_view code_;
  std::size_t at_ = 0;
  std::string recent_;   // code before the last literal, and it
  std::string between_;  // code since the last literal
  std::vector<SourceText> texts_;
};

}  // namespace

std::vector<SourceText> TextsOf(std::string_view code) { return Scanner(code).Scan(); }

bool IsForPeople(const SourceText& text) {
  bool hasLetter = false;
  for (std::size_t i = 0; i < text.text.size(); ++i) {
    if (!IsLetter(text.text[i])) continue;
    hasLetter = true;
    // A letter behind a blank behind two letters.
    if (i >= 3 && text.text[i - 1] == ' ' && IsLetter(text.text[i - 2]) &&
        IsLetter(text.text[i - 3])) {
      return true;
    }
  }
  return hasLetter && text.translated;
}

}  // namespace test
