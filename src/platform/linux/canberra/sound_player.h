#pragma once

#include "platform/audio_length.h"
#include "platform/sound_player.h"

#include <memory>

namespace velmo {

/// By libcanberra, in a thread of its own, from the freedesktop sound theme: Tink is its "message-new-instant", Pop its
/// "complete", Funk its "dialog-warning". A cue must be over before the first words are, so a sound that lasts half a
/// second or longer is not played, and neither is one that would come a quarter of a second late.
[[nodiscard]] std::unique_ptr<SoundPlayer>
makeCanberraSoundPlayer(std::shared_ptr<const AudioLength> lengths);

} // namespace velmo
