// SPDX-License-Identifier: MIT

#include "app/network/access_settings.h"

#include <charconv>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "model/status.h"

namespace app {

namespace {

constexpr char kPanelAccess[] = "PANEL ACCESS";
constexpr char kOpenGateway[] = "OPEN GATEWAY";

// What reads a value; false for one that cannot be understood.
using ReadValue = std::function<bool(const std::string&)>;

std::string Lowered(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

// Reads a section of these keys, in small letters.  Returns the first line that cannot be
// understood: another key may be one of these with a slip, a second one says something else.
QString ReadSection(const config::IniFile& settings, const char* section,
                    const std::map<std::string, ReadValue>& keys) {
  std::set<std::string> seen;
  for (const config::IniFile::Entry& entry : settings.Entries(section)) {
    const auto key = keys.find(Lowered(entry.key));
    const bool isUnderstood =
        key != keys.end() && seen.insert(key->first).second && key->second(entry.value);
    if (!isUnderstood) {
      return QStringLiteral("%1=%2").arg(QString::fromStdString(entry.key),
                                         QString::fromStdString(entry.value));
    }
  }
  return {};
}

ReadValue Into(QHostAddress& address) {
  return [&address](const std::string& value) {
    const std::optional<QHostAddress> parsed = gateway::ParseAddress(value);
    if (parsed) address = *parsed;
    return parsed.has_value();
  };
}

ReadValue Into(gateway::AddressList& list) {
  return [&list](const std::string& value) {
    std::optional<gateway::AddressList> parsed = gateway::AddressList::Parse(value);
    if (parsed) list = std::move(*parsed);
    return parsed.has_value();
  };
}

ReadValue IntoYesOrNo(bool& flag) {
  return [&flag](const std::string& value) {
    const std::string word = Lowered(value);
    flag = word == "yes";
    return word == "yes" || word == "no";
  };
}

ReadValue IntoPort(int& port) {
  return [&port](const std::string& value) {
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), port);
    return error == std::errc() && end == value.data() + value.size() && port >= 1 && port <= 65535;
  };
}

}  // namespace

PanelAccess ReadPanelAccess(const config::IniFile& settings) {
  PanelAccess access;
  const ReadValue listen = Into(access.listen);
  access.problem = ReadSection(settings, kPanelAccess,
                               {{"listen",
                                 [&](const std::string& value) {
                                   access.hasListen = true;
                                   return listen(value);
                                 }},
                                {"allow", Into(access.allow)},
                                {"takesfrom", Into(access.takesFrom)}});
  return access;
}

OpenGatewayAccess ReadOpenGatewayAccess(const config::IniFile& settings) {
  OpenGatewayAccess access;
  access.problem = ReadSection(settings, kOpenGateway,
                               {{"port", IntoPort(access.port)},
                                {"listen", Into(access.listen)},
                                {"allow", Into(access.allow)},
                                {"takes", IntoYesOrNo(access.mayTake)}});
  access.isWanted = access.port != 0 || !access.problem.isEmpty();
  return access;
}

namespace {

std::string LettersOf(const std::string& text) {
  std::string letters;
  for (const char c : Lowered(text)) {
    if (c >= 'a' && c <= 'z') letters += c;
  }
  return letters;
}

// Whether a text is the name of a section, or would be without a slip.
bool IsLikeSection(const std::string& text) {
  const std::string letters = LettersOf(text);
  return letters == LettersOf(kPanelAccess) || letters == LettersOf(kOpenGateway);
}

bool IsSection(const std::string& name) {
  const std::string lowered = Lowered(name);
  return lowered == Lowered(kPanelAccess) || lowered == Lowered(kOpenGateway);
}

// The first thing in the file that was meant for one of the sections and does not stand in it.
QString FindSlip(const config::IniFile& settings) {
  static const std::set<std::string> kOurs{"listen", "allow", "takesfrom", "takes"};
  if (settings.Text().find('\0') != std::string::npos) {
    return QStringLiteral("the file is not plain text");
  }
  for (const std::string& name : settings.Sections()) {
    if (IsLikeSection(name) && !IsSection(name)) {
      return QStringLiteral("[%1]").arg(QString::fromStdString(name));
    }
  }
  for (const config::IniFile::Line& line : settings.Lines()) {
    if (IsSection(line.section)) continue;
    const bool isHead = !line.hasEquals && (line.section.empty() || IsLikeSection(line.entry.key));
    if (isHead) return QString::fromStdString(line.entry.key);
    if (line.hasEquals && kOurs.contains(Lowered(line.entry.key))) {
      return QStringLiteral("%1=%2").arg(QString::fromStdString(line.entry.key),
                                         QString::fromStdString(line.entry.value));
    }
  }
  return {};
}

void Close(AccessSettings& access, const QString& problem) {
  access.panels.problem = problem;
  access.openGateway.problem = problem;
  access.openGateway.isWanted = true;
}

QStringList InForce(const config::IniFile& settings) {
  QStringList sections;
  for (const char* const section : {kPanelAccess, kOpenGateway}) {
    QStringList lines;
    for (const config::IniFile::Entry& entry : settings.Entries(section)) {
      lines.append(QStringLiteral("%1=%2").arg(QString::fromStdString(entry.key),
                                               QString::fromStdString(entry.value)));
    }
    if (lines.isEmpty()) continue;
    sections.append(QLatin1String(section) + QStringLiteral(": ") +
                    lines.join(QStringLiteral("; ")));
  }
  return sections;
}

}  // namespace

AccessSettings ReadAccessSettings(const config::IniFile& settings) {
  AccessSettings access{.panels = ReadPanelAccess(settings),
                        .openGateway = ReadOpenGatewayAccess(settings),
                        .inForce = InForce(settings)};
  if (const QString slip = FindSlip(settings); !slip.isEmpty()) Close(access, slip);
  return access;
}

AccessSettings ReadAccessSettings(const std::filesystem::path& installed,
                                  const std::filesystem::path& own) {
  namespace fs = std::filesystem;
  std::error_code unseen;
  const bool isInstalled = fs::symlink_status(installed, unseen).type() != fs::file_type::not_found;
  config::IniFile settings;
  const model::Status status = config::IniFile::Load(isInstalled ? installed : own, &settings);
  AccessSettings access = ReadAccessSettings(settings);
  if (!status.ok()) {
    Close(access, QString::fromStdString(status.Description()));
  } else if (isInstalled && !fs::exists(installed, unseen)) {
    Close(access, QStringLiteral("the file cannot be read"));
  }
  return access;
}

}  // namespace app
