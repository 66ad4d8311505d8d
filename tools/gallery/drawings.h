// SPDX-License-Identifier: MIT
//
// What the gallery draws: each draws one window, or what belongs to it, in many states.

#ifndef TOOLS_GALLERY_DRAWINGS_H_
#define TOOLS_GALLERY_DRAWINGS_H_

namespace gallery {

void DrawBackups();
void DrawExports();  // CSV and PDF files of a map, its labels and its buttons
void DrawHelp();     // every page of the manual
void DrawLabels();
void DrawLevels();   // and the tally
void DrawLists();    // of the recent changes and of events
void DrawMap();      // and the pictures of the tools
void DrawPresets();  // and their recall
void DrawProgramming();
void DrawSettings();
void DrawShell();     // status bar and hints, in many widths
void DrawTransfer();  // download and retrieval

}  // namespace gallery

#endif  // TOOLS_GALLERY_DRAWINGS_H_
