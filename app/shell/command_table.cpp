// SPDX-License-Identifier: MIT

#include "app/shell/command_table.h"

#include <algorithm>
#include <utility>

namespace app {

namespace {

constexpr Command kCommands[] = {
    {"ID_File", "&File", "", "", ""},
    {"ID_Window", "&Window", "", "", ""},
    {"ID_Help", "&Help", "", "", ""},
    {"ID_SendData", "&Send Data To Switcher…", "Send the whole configuration to the switcher",
     "send-data", "Ctrl+Shift+S"},
    {"ID_RetreiveData", "&Retrieve Data From Switcher…",
     "Read the whole configuration back from the switcher", "retrieve-data", "Ctrl+Shift+R"},
    {"ID_Exit", "E&xit", "Save everything and leave", "exit", "Ctrl+Q"},
    {"ID_XpointMap", "Crosspoint &Map", "Show the crosspoint map", "xpoint-map", "Ctrl+1"},
    {"ID_StationAlphas", "Station &Labels", "Show the station labels", "station-labels", "Ctrl+2"},
    {"ID_ButtonProgramming", "&Button Programming", "Show the station button programming",
     "button-programming", "Ctrl+3"},
    {"ID_ViewSourcelevelControl", "&Input Levels…", "Set the gain of every input", "input-levels",
     "Ctrl+4"},
    {"ID_SourceLevelControl", "Input Levels…", "Set the gain of every input", "input-levels", ""},
    {"ID_ViewQDVStatus", "&QDV Status…", "Show which QDV output modules respond", "qdv-status",
     "Ctrl+5"},
    {"ID_QDVStatus", "QDV Status…", "Show which QDV output modules respond", "qdv-status", ""},
    {"ID_Cascade", "&Cascade", "", "cascade", ""},
    {"ID_TileHorizontal", "Tile &Horizontally", "", "tile-horizontal", ""},
    {"ID_TileVertical", "Tile &Vertically", "", "tile-vertical", ""},
    {"ID_ArrangeIcons", "&Arrange Icons", "", "arrange-icons", ""},
    {"ID_Contents", "&Contents", "Open the manual", "contents", "F1"},
    {"ID_About", "&About Orvo Intercom Control", "", "about", ""},
};

}  // namespace

std::span<const Command> AllCommands() { return kCommands; }

QString CommandWords(const QString& id) {
  const auto commands = AllCommands();
  const auto command = std::ranges::find_if(
      commands, [&](const Command& each) { return id == QLatin1String(each.id); });
  if (command == commands.end()) return id;
  QString caption = QString::fromUtf8(command->caption).remove(u'&');
  if (caption.endsWith(u'…')) caption.chop(1);
  return caption;
}

void CommandTable::Set(const QString& id, Operation operation) {
  operations_[id] = std::move(operation);
}

void CommandTable::Run(const QString& id) const {
  const auto entry = operations_.find(id);
  if (entry == operations_.end()) return;
  Q_EMIT Runs(id);
  entry->second();
}

}  // namespace app
