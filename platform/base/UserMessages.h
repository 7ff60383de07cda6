// The program's own window messages.
#pragma once
#include "platform/base/Window.h"

constexpr UINT UM_GRAPH_NOTIFY = 0x465;
constexpr UINT UM_PLAY_MEDIA = 0x468;
constexpr UINT UM_STOP = 0x469;
constexpr UINT UM_PAUSE = 0x46A;
constexpr UINT UM_SEEK_DRAG = 0x46B;
constexpr UINT UM_SEEK_TO = 0x46C;
constexpr UINT UM_SET_VOLUME = 0x46D;
constexpr UINT UM_MUTE = 0x46E;
constexpr UINT UM_PLAY_DVD = 0x46F;
constexpr UINT UM_PLAY_CD = 0x470;
constexpr UINT UM_BAR_STARTED = 0x478;
constexpr UINT UM_BAR_STOPPED = 0x479;
constexpr UINT UM_BAR_PAUSED = 0x47A;
constexpr UINT UM_BAR_POSITION = 0x47B;
constexpr UINT UM_BAR_VOLUME = 0x47C;
constexpr UINT UM_BAR_MUTED = 0x47D;
constexpr UINT UM_SHOW_LEFT = 0x482;
constexpr UINT UM_LIST_COLUMNS = 0x483;
constexpr UINT UM_DVD_INFO = 0x485;
constexpr UINT UM_UPDATE_STATUS = 0x48C;
constexpr UINT UM_UPDATE_POS = 0x48D;
constexpr UINT UM_UPDATE_RANGE = 0x48E;
constexpr UINT UM_UPDATE_FAILED = 0x48F;
constexpr UINT UM_UPDATE_DONE = 0x490;
constexpr UINT UM_UPDATE_IDLE = 0x491;
