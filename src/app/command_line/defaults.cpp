#include "app/command_line/command_options.h"
#include "app/command_line/commands.h"
#include "app/command_line/preference_text.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "base/result.h"
#include "store/preferences.h"

#include <array>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr CommandWords kWords = {"defaults"_L1, "list | read KEY | write KEY KIND VALUE | delete KEY"_L1,
                                 "Read and change the preferences."_L1};

/// An exit status, or what is off about the words.
using Outcome = Result<int, QString>;

struct Action {
    QLatin1StringView name;
    Outcome (*run)(Preferences &preferences, const QStringList &words);
};

constexpr const char *kHelp = R"(Usage: velmo defaults ACTION

Reads and changes the preferences, whether the application runs or not.

Actions:
  list                     Print every preference on a line of its own: key, kind and value, separated by
                           tabs; backslashes, tabs, line breaks and control characters are escaped as in C.
  read KEY                 Print the value. The exit status is 1 when there is none.
  write KEY --string TEXT  Store a text,
            --bool BOOL    true or false,
            --int NUMBER   a whole number,
            --date MOMENT  a moment such as 2026-03-14T09:30:00Z,
            --data BASE64  or bytes. What follows the kind is the value, whatever it looks like.
  delete KEY               Remove the value, if there is one.
)";

int statusOf(bool done) {
    return done ? exit_status::success : exit_status::failure;
}

bool asksForHelp(const QString &word) {
    return word == u"--help" || word == u"-h";
}

Result<QString, QString> keyIn(const QStringList &words) {
    if (words.isEmpty() || words.first().isEmpty())
        return failed(u"the key is missing"_s);
    if (words.first().startsWith(u'-'))
        return failed(u"unknown option '%1'"_s.arg(words.first()));
    return words.first();
}

/// Nothing when there are at most so many words.
std::optional<QString> surplus(const QStringList &words, qsizetype most) {
    if (words.size() <= most)
        return std::nullopt;
    return u"unexpected argument '%1'"_s.arg(words.at(most));
}

Outcome list(Preferences &preferences, const QStringList &words) {
    if (const auto complaint = surplus(words, 0))
        return failed(*complaint);
    QString lines;
    for (const auto &[key, value] : preferences.all())
        lines += listLine(key, value) + u'\n';
    return statusOf(print(lines));
}

Outcome read(Preferences &preferences, const QStringList &words) {
    const auto key = keyIn(words);
    if (!key)
        return failed(key.error());
    if (const auto complaint = surplus(words, 1))
        return failed(*complaint);
    const auto value = preferences.value(*key);
    if (!value) {
        printError(u"velmo defaults: there is no value for '%1'"_s.arg(*key));
        return exit_status::failure;
    }
    return statusOf(print(textOf(*value) + u'\n'));
}

Result<PreferenceValue, QString> valueIn(const QStringList &words) {
    if (words.size() < 2)
        return failed(u"the kind of the value is missing: --string, --bool, --int, --date or --data"_s);
    const QString &option = words.at(1);
    const auto *kind = option.startsWith(u"--") ? preferenceKind(QStringView(option).sliced(2)) : nullptr;
    if (!kind)
        return failed(u"unknown kind '%1'"_s.arg(option));
    if (words.size() < 3)
        return failed(u"the value after %1 is missing"_s.arg(option));
    auto value = kind->parse(words.at(2));
    if (!value)
        return failed(u"'%1' is not %2"_s.arg(words.at(2), QString(kind->expected)));
    return std::move(*value);
}

Outcome write(Preferences &preferences, const QStringList &words) {
    const auto key = keyIn(words);
    if (!key)
        return failed(key.error());
    auto value = valueIn(words);
    if (!value)
        return failed(value.error());
    if (const auto complaint = surplus(words, 3))
        return failed(*complaint);
    return statusOf(preferences.set(*key, std::move(*value)));
}

Outcome remove(Preferences &preferences, const QStringList &words) {
    const auto key = keyIn(words);
    if (!key)
        return failed(key.error());
    if (const auto complaint = surplus(words, 1))
        return failed(*complaint);
    return statusOf(preferences.remove(*key));
}

constexpr std::array kActions = {
    Action{"list"_L1, list},
    Action{"read"_L1, read},
    Action{"write"_L1, write},
    Action{"delete"_L1, remove},
};

Outcome carryOut(Preferences &preferences, const QStringList &arguments) {
    if (arguments.isEmpty())
        return failed(u"an action is missing: list, read, write or delete"_s);
    const QString &name = arguments.first();
    for (const Action &action : kActions) {
        if (name == action.name)
            return action.run(preferences, arguments.sliced(1));
    }
    return failed(u"unknown %1 '%2'"_s.arg(name.startsWith(u'-') ? u"option"_s : u"action"_s, name));
}

int runDefaults(const Lazy<Preferences &> &preferences, const QStringList &arguments) {
    // The first words only: further on, "--help" is a value.
    if (asksForHelp(arguments.value(0)) || asksForHelp(arguments.value(1)))
        return statusOf(print(QString::fromUtf8(kHelp)));
    const Outcome outcome = carryOut(preferences(), arguments);
    return outcome ? *outcome : CommandOptions(kWords).usageError(outcome.error());
}

} // namespace

Command defaultsCommand(Lazy<Preferences &> preferences) {
    return {kWords, std::bind_front(runDefaults, std::move(preferences))};
}

} // namespace velmo
