#pragma once

#include "dictation/session/dictation_stage.h"
#include "ui/models/trigger_key_name.h"

namespace velmo::testing {

/// A dictation, and what the windows that show it need besides.
struct ShownDictation : DictationStage {
    using DictationStage::DictationStage;

    TriggerKeyName triggerKeyName{preferences, watch, keyboardKeys};
};

} // namespace velmo::testing
