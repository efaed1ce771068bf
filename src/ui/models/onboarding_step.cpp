#include "ui/models/onboarding_step.h"

namespace velmo {

QHash<int, QByteArray> OnboardingSteps::roleNames() const {
    return {{NumberRole, "number"},
            {TitleRole, "title"},
            {DescriptionRole, "description"},
            {DoneRole, "done"},
            {CurrentRole, "current"},
            {ButtonTextRole, "buttonText"},
            {ButtonSymbolRole, "buttonSymbol"},
            {HintRole, "hint"},
            {NoteRole, "note"}};
}

QVariant OnboardingSteps::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const OnboardingStep &step = rows().at(index.row());
    switch (role) {
    case NumberRole:
        return step.number;
    case TitleRole:
        return step.title;
    case DescriptionRole:
        return step.description;
    case DoneRole:
        return step.isDone;
    case CurrentRole:
        return step.isCurrent;
    case ButtonTextRole:
        return step.buttonText;
    case ButtonSymbolRole:
        return step.buttonSymbol;
    case HintRole:
        return step.hint;
    case NoteRole:
        return step.note;
    default:
        return {};
    }
}

} // namespace velmo
