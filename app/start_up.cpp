// SPDX-License-Identifier: MIT

#include "app/start_up.h"

#include <cmath>
#include <limits>

#include "config/configuration.h"

namespace app {

namespace {

using Icon = model::ErrorReporter::Icon;

constexpr char kCommErrorTitle[] = "Comm Error";

// Reads a count as the nearest whole number, halves to the even neighbour.  False, and *number
// as it was, when it is missing, null, no number, unreadable or outside [least, greatest]: all
// of these are shown with the same text.
bool ReadNumber(const jet::RecordSet* records, std::string_view field, int least, int greatest,
                std::int16_t* number) {
  if (records == nullptr) return false;
  jet::Value value;
  if (!records->Get(field, &value).ok() || value.IsNull()) return false;
  const double real = std::nearbyint(value.Real(std::numeric_limits<double>::quiet_NaN()));
  if (!(real >= least && real <= greatest)) return false;
  *number = static_cast<std::int16_t>(real);
  return true;
}

}  // namespace

StartUp::StartUp(model::SystemModel& model, db::DatabaseFiles& files, gateway::Listener& listener,
                 switcher::Link& link, model::ErrorReporter& reporter)
    : model_(model), files_(files), listener_(listener), link_(link), reporter_(reporter) {}

void StartUp::Run(std::string_view folder, const config::IniFile& settings) {
  SetDefaults(folder);
  config::ReadConfiguration(settings, model_);
  StartGateway();
  OpenDatabase();
  ReadCounts();
  model_.ApplyFixedValues();
  model_.LinkStatus.fill(0);
  model_.AllocateMap();
  model_.TallyViewOpen = false;
  model_.ResetLevels();
  OpenSerialPort();
}

void StartUp::SetDefaults(std::string_view folder) {
  model_.IpPort = 1250;
  model_.SoftpanelSupport = true;
  model_.ComPort = 1;
  model_.AppPath = model::ToAppPath(folder);
}

void StartUp::StartGateway() {
  if (!model_.SoftpanelSupport) {
    listener_.Stop();
    return;
  }
  if (!listener_.Start(model_.IpPort).ok()) ReportGatewayFailure();
}

void StartUp::OpenDatabase() {
  const model::Status status = files_.Open();
  if (status.ok()) return;
  // Two spaces: the number is shown with the place of its sign.
  reporter_.Show(Icon::Critical, "Database Error",
                 "Error Opening Database File\r\rError #  " + std::to_string(status.Number()) +
                     " - " + status.Description());
}

void StartUp::ReadCounts() {
  constexpr int kLeast = std::numeric_limits<std::int16_t>::min();
  constexpr int kGreatest = std::numeric_limits<std::int16_t>::max();
  ReadCount("StationCount", kLeast, kGreatest, &model_.StationCount);
  // The matrix is sized by this one: a negative or larger count is as good as none.
  ReadCount("ChannelCount", 0, model::kMaxChannelCount, &model_.ChannelCount);
  ReadCount("LabelCount", kLeast, kGreatest, &model_.LabelCount);
  ReadCount("InCount", kLeast, kGreatest, &model_.InCount);
  ReadCount("OutCount", kLeast, kGreatest, &model_.OutCount);
  ReadCount("ButtonCount", kLeast, kGreatest, &model_.ButtonCount);
  ReadCount("ChkBoxCount", kLeast, kGreatest, &model_.ChkBoxCount);
}

void StartUp::ReadCount(std::string_view field, int least, int greatest, std::int16_t* count) {
  if (!ReadNumber(files_.DbInfo(), field, least, greatest, count)) ReportGatewayFailure();
}

void StartUp::OpenSerialPort() {
  if (link_.OpenPort().ok()) return;
  reporter_.Show(Icon::Critical, kCommErrorTitle,
                 "Comm: " + std::to_string(model_.ComPort) +
                     " is either in use by another program or unavailable.\r"
                     "Please select another comm port and restart Orvo Intercom Control");
}

// One text for every failure between the gateway and the levels, the database's counts
// included.
void StartUp::ReportGatewayFailure() {
  reporter_.Show(Icon::Critical, kCommErrorTitle,
                 "The IP Port: " + std::to_string(model_.IpPort) +
                     " is either in use by another program or unavailable.\r"
                     "Please select another IP port and restart Orvo Intercom Control.\r"
                     "Soft Panel support is not available.");
}

}  // namespace app
