// SPDX-License-Identifier: MIT

#ifndef APP_NETWORK_ACCESS_SETTINGS_H_
#define APP_NETWORK_ACCESS_SETTINGS_H_

#include <QHostAddress>
#include <QString>
#include <QStringList>
#include <filesystem>

#include "config/ini_file.h"
#include "gateway/address_list.h"

namespace app {

// Who is let in on the network, as the installer has written it into Orvotesk.ini.  The program
// never writes it.

// Section "PANEL ACCESS".  Without it everyone is let in on every interface and may take.
struct PanelAccess {
  // Why the section cannot be understood, such as "Allow=10.1"; nobody is let in then.
  QString problem = {};
  QHostAddress listen{QHostAddress::AnyIPv4};
  bool hasListen = false;  // the section says so
  gateway::AddressList allow = {};
  gateway::AddressList takesFrom = {};
};

// Section "OPEN GATEWAY".  Without a port there is no open gateway.
struct OpenGatewayAccess {
  bool isWanted = false;
  QString problem;  // as above
  int port = 0;
  QHostAddress listen{QHostAddress::LocalHost};
  gateway::AddressList allow;
  bool mayTake = false;

  // Whether others than this computer may take.
  bool TakesFromElsewhere() const { return isWanted && mayTake && !listen.isLoopback(); }
};

PanelAccess ReadPanelAccess(const config::IniFile& settings);
OpenGatewayAccess ReadOpenGatewayAccess(const config::IniFile& settings);

// Both.  What looks like one of the sections and is not, because of a slip in its head or in the
// file, is a problem of both: nobody is to be let in whom the section would keep out.
struct AccessSettings {
  PanelAccess panels;
  OpenGatewayAccess openGateway;
  QStringList inForce;  // "PANEL ACCESS: Allow=192.0.2.0/24", for each section that is there
};
AccessSettings ReadAccessSettings(const config::IniFile& settings);

// Both of the file `installed` in the program's folder, where only the installer may write, if
// there is one, else of the console's `own`.  A file that cannot be read cannot be understood, nor
// one that cannot be seen to be none.
AccessSettings ReadAccessSettings(const std::filesystem::path& installed,
                                  const std::filesystem::path& own);

}  // namespace app

#endif  // APP_NETWORK_ACCESS_SETTINGS_H_
