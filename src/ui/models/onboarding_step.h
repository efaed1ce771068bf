#pragma once

#include "ui/models/row_model.h"

namespace velmo {

/// A step of the set-up as it is shown.
struct OnboardingStep {
    int number = 0;
    QString title = {};
    QString description = {};
    bool isDone = false;
    bool isCurrent = false;  ///< The first that is not done: it alone has a button and a hint.
    QString buttonText = {}; ///< Null where there is nothing to press.
    QString buttonSymbol = {};
    QString hint = {}; ///< Styled text.
    QString note = {}; ///< While an earlier step is not done.

    bool operator==(const OnboardingStep &) const = default;
};

/// Steps as rows of a view; a role for each field, the flags as "done" and "current".
class OnboardingSteps final : public RowModel<OnboardingStep, int> {
public:
    enum Role {
        NumberRole = Qt::UserRole,
        TitleRole,
        DescriptionRole,
        DoneRole,
        CurrentRole,
        ButtonTextRole,
        ButtonSymbolRole,
        HintRole,
        NoteRole
    };

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

protected:
    [[nodiscard]] int keyOf(const OnboardingStep &step) const override { return step.number; }
};

} // namespace velmo
