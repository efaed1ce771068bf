#pragma once

#include "platform/microphone_permission.h"

namespace velmo {

/// A desktop on which every application may listen. Whether there is something to listen to is `MicrophonePresence`.
class GrantedMicrophonePermission final : public MicrophonePermission {
public:
    [[nodiscard]] Status status() const override { return Status::Granted; }
    void request(Answer answer) override { answer(true); }
};

} // namespace velmo
