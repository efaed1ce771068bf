#pragma once

#include "base/calendar.h"
#include "desks/service_desk.h"
#include "dictation/session/dictation_stage.h"
#include "ui/models/speech_view.h"

namespace velmo::testing {

/// The speech page over a service that can change, and a dictation to try.
struct SpeechDesk {
    /// What is under way comes to its end.
    void settle() {
        for (int hop = 0; hop < 3; ++hop) {
            service.http.waitUntilIdle();
            stage.queue.runPosted();
        }
    }

    /// The next look of the page.
    void lookAgain() {
        stage.queue.advance(std::chrono::milliseconds(1500));
        settle();
    }

    DictationStage stage;
    ServiceDesk service{stage.queue};
    Calendar calendar{{QStringLiteral("en_US"), QStringLiteral("UTC")}};
    SpeechTrial trial{stage.queue, stage.manager};
    SpeechView view{
        {stage.queue, stage.preferences, stage.watch, service.client, service.watch, trial, calendar}};
};

} // namespace velmo::testing
