#pragma once
// The kinds of channel that an edit has, as the edit model counts them and as lists name them.

/// Channels of pictures: "V1", "V2" and so on.
constexpr int picture_channel = 1;
/// Channels of sound: "A1", "A2" and so on.
constexpr int sound_channel = 2;
