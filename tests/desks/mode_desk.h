#pragma once

#include "desks/list_desk.h"
#include "desks/service_desk.h"
#include "store/custom_modes.h"
#include "support/manual_main_queue.h"
#include "ui/models/mode_view.h"

namespace velmo::testing {

/// The mode page, at first without modes of one's own.
struct ModeDesk : ListDesk<ManualMainQueue> {
    void addCustomModes() {
        addCustomMode(
            preferences,
            {QStringLiteral("1"), QStringLiteral("Email Writer"),
             QStringLiteral(
                 "Write the text as a short, friendly e-mail with a greeting and my name at the end."),
             QStringLiteral("envelope")});
        addCustomMode(preferences,
                      {QStringLiteral("2"), QStringLiteral("Standup Notes"),
                       QStringLiteral("Three short lines: yesterday, today, what is in the way."),
                       QStringLiteral("lightbulb")});
    }

    ServiceDesk service{queue};
    ModeView view{preferences, watch, service.watch, undoOffer};
};

} // namespace velmo::testing
