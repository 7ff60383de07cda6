// Ids of the menu entries the desktop features add (object names of their
// actions), apart from the window's own.
#pragma once

constexpr int ID_RECORD = 33100;
constexpr int ID_PLAYED_TITLES = 33101;
constexpr int ID_CLOSE_TO_TRAY = 33102;
constexpr int ID_SLEEP_MENU = 33110;
// "Off"; the minute entries are this plus their minutes (15, 30, 60, 90).
constexpr int ID_SLEEP_OFF = 33200;
constexpr int ID_SLEEP_END_OF_ITEM = 33299;
