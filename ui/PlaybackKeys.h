// The space bar over a pane while a medium plays, the same in the list and
// over the picture.
#pragma once

class CMediaPlayer;

// Pauses or resumes a file; a stream, which can't pause, is muted or
// unmuted instead. The transport bar is told either way.
void PauseOrMuteBySpace(CMediaPlayer& engine);
