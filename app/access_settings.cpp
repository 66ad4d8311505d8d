// SPDX-License-Identifier: MIT

#include "app/access_settings.h"

#include <QDir>
#include <charconv>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "config/configuration.h"
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
  access.problem = ReadSection(settings, kPanelAccess,
                               {{"listen", Into(access.listen)},
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

AccessSettings ReadAccessSettings(const AppFolder& folder) {
  const std::filesystem::path installed =
      QDir(folder.program).filePath(QLatin1String(config::kConfigurationFile)).toStdU16String();
  std::error_code unseen;
  const std::filesystem::path path = std::filesystem::exists(installed, unseen)
                                         ? installed
                                         : folder.File(config::kConfigurationFile);
  config::IniFile settings;
  const model::Status status = config::IniFile::Load(path, &settings);
  AccessSettings access{.panels = ReadPanelAccess(settings),
                        .openGateway = ReadOpenGatewayAccess(settings)};
  if (!status.ok()) access.panels.problem = QString::fromStdString(status.Description());
  return access;
}

}  // namespace app
