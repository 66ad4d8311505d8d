// SPDX-License-Identifier: MIT

#include "app/run/start_up.h"

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

void StartUp::Run(std::string_view folder, const config::IniFile& settings) {
  SetDefaults(folder);
  config::ReadConfiguration(settings, services_.model);
  StartGateway();
  OpenDatabase();
  ReadCounts();
  services_.model.ApplyFixedValues();
  services_.model.LinkStatus.fill(0);
  services_.model.AllocateMap();
  services_.model.TallyViewOpen = false;
  services_.model.ResetLevels();
  OpenSerialPort();
}

void StartUp::SetDefaults(std::string_view folder) {
  services_.model.IpPort = 1250;
  services_.model.SoftpanelSupport = true;
  services_.model.ComPort = 1;
  services_.model.AppPath = model::ToAppPath(folder);
}

void StartUp::StartGateway() {
  if (!services_.model.SoftpanelSupport) {
    services_.listener.Stop();
    return;
  }
  if (!services_.listener.Start(services_.model.IpPort).ok()) ReportGatewayFailure();
}

void StartUp::OpenDatabase() {
  const model::Status status = services_.files.Open();
  if (status.ok()) return;
  // Two spaces: the number is shown with the place of its sign.
  services_.reporter.Show(Icon::Critical, "Database Error",
                          "Error Opening Database File\r\rError #  " +
                              std::to_string(status.Number()) + " - " + status.Description());
}

void StartUp::ReadCounts() {
  constexpr int kLeast = std::numeric_limits<std::int16_t>::min();
  constexpr int kGreatest = std::numeric_limits<std::int16_t>::max();
  ReadCount("StationCount", kLeast, kGreatest, &services_.model.StationCount);
  // The matrix is sized by this one: a negative or larger count is as good as none.
  ReadCount("ChannelCount", 0, model::kMaxChannelCount, &services_.model.ChannelCount);
  ReadCount("LabelCount", kLeast, kGreatest, &services_.model.LabelCount);
  ReadCount("InCount", kLeast, kGreatest, &services_.model.InCount);
  ReadCount("OutCount", kLeast, kGreatest, &services_.model.OutCount);
  ReadCount("ButtonCount", kLeast, kGreatest, &services_.model.ButtonCount);
  ReadCount("ChkBoxCount", kLeast, kGreatest, &services_.model.ChkBoxCount);
}

void StartUp::ReadCount(std::string_view field, int least, int greatest, std::int16_t* count) {
  if (!ReadNumber(services_.files.DbInfo(), field, least, greatest, count)) ReportGatewayFailure();
}

void StartUp::OpenSerialPort() {
  if (services_.link.OpenPort().ok()) return;
  services_.reporter.Show(Icon::Critical, kCommErrorTitle,
                          "Comm: " + std::to_string(services_.model.ComPort) +
                              " is either in use by another program or unavailable.\r"
                              "Please select another comm port and restart Orvo Intercom Control");
}

// One text for every failure between the gateway and the levels, the database's counts
// included.
void StartUp::ReportGatewayFailure() {
  services_.reporter.Show(Icon::Critical, kCommErrorTitle,
                          "The IP Port: " + std::to_string(services_.model.IpPort) +
                              " is either in use by another program or unavailable.\r"
                              "Please select another IP port and restart Orvo Intercom Control.\r"
                              "Soft Panel support is not available.");
}

}  // namespace app
