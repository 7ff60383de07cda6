// Menu command ids.
#pragma once
#include <functional>

#include "platform/base/CString.h"

class CMainFrame;
class COrvexDoc;

constexpr int ID_FILE_OPEN = 57601;
constexpr int ID_OPEN_MEDIA_URL = 32774;
constexpr int ID_SAVE_CONTENTS = 32781;
constexpr int ID_APP_EXIT = 57665;
constexpr int ID_VIEW_STATUS_BAR = 59393;
constexpr int ID_FONT_LEFT = 32783;
constexpr int ID_FONT_RIGHT = 32784;
constexpr int ID_FOLDER_LOCATIONS = 32791;
constexpr int ID_LAV_SETUP = 32782;
constexpr int ID_CHECK_FOR_UPDATES = 32790;
constexpr int ID_EXPORT = 32779;
constexpr int ID_IMPORT = 32780;
constexpr int ID_RADIO_SEARCH = 32788;
constexpr int ID_RADIO_UPDATE = 32787;
constexpr int ID_DVD_NAVIGATION = 32785;
constexpr int ID_PLAY_DVD = 32793;
constexpr int ID_PLAY_CD = 32795;
constexpr int ID_PLAY_DVD_FOLDER = 32796;
constexpr int ID_HELP_CONTENTS = 32786;
constexpr int ID_ABOUT = 57664;

// Enables and connects the commands that run the document's dialogs (Folder
// Locations, LAV Setup, Export, Import, the radio update and search) and Orvex
// Help, and gives the document its dialogs, which the panes' editing commands
// use as well (ItemDialogCommands.cpp).
void ConnectItemDialogCommands(CMainFrame& frame, COrvexDoc& doc);
// What the frame's drive watcher calls when the system's drives changed:
// the document hears of each drive root that came or went (DriveEvents.cpp).
std::function<void(const CString&, BOOL)> DriveEventsFor(COrvexDoc& doc);
// The CD-DVD menu: its commands, enabled as the drives and the player stand
// each time the menu opens (MainFrameDisc.cpp).
void ConnectDiscCommands(CMainFrame& frame, COrvexDoc& doc);
// Sets the CD-DVD menu's entries as the menu opening does.
void UpdateDiscCommands(CMainFrame& frame, COrvexDoc& doc);
