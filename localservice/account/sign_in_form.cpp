#include "localservice/account/sign_in_form.h"

#include "base/characters.h"
#include "localservice/account/person.h"
#include "localservice/http/page.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr QLatin1StringView kEmail("email");
constexpr QLatin1StringView kGivenName("given_name");
constexpr QLatin1StringView kFamilyName("family_name");

Html hiddenInput(const QString &name, const QString &value) {
    return {u"<input type=\"hidden\" name=\"%1\" value=\"%2\">\n"_s.arg(name, value.toHtmlEscaped())};
}

struct Field {
    QString name;
    QString value;
    std::optional<QString> fault;
};

Html faultLine(const Field &field) {
    if (!field.fault)
        return {};
    return {u"<p class=\"error\" id=\"%1-error\">%2</p>\n"_s.arg(field.name, field.fault->toHtmlEscaped())};
}

/// Attributes of the input.
Html stateOf(const Field &field, bool hasFocus) {
    QString state = hasFocus ? u" autofocus"_s : QString();
    if (field.fault)
        state += u" aria-invalid=\"true\" aria-describedby=\"%1-error\""_s.arg(field.name);
    return {state};
}

/// The first field at fault gets the cursor, the first of all when there is none.
void fill(HtmlValues &values, const std::array<Field, 3> &fields) {
    const auto *focused =
        std::find_if(fields.begin(), fields.end(), [](const Field &field) { return field.fault; });
    if (focused == fields.end())
        focused = fields.begin();
    for (const Field &field : fields) {
        values.insert(field.name, field.value);
        values.insert(field.name + u"-state"_s, stateOf(field, &field == focused));
        values.insert(field.name + u"-fault"_s, faultLine(field));
    }
}

std::optional<QString> faultInName(const QString &part) {
    if (isNamePart(part))
        return std::nullopt;
    return u"This name is too long, or has characters that cannot be shown."_s;
}

} // namespace

SignInEntry signInEntry(const FormFields &fields) {
    const auto entered = [&fields](QLatin1StringView name) { return trimmed(fields.value(name)).toString(); };
    return {entered(kEmail), entered(kGivenName), entered(kFamilyName)};
}

SignInFaults faultsIn(const SignInEntry &entry) {
    SignInFaults faults;
    if (entry.email.isEmpty())
        faults.email = u"Enter your e-mail address."_s;
    else if (!isEmail(entry.email))
        faults.email = u"Enter an e-mail address like kari@example.org."_s;
    faults.givenName = faultInName(entry.givenName);
    faults.familyName = faultInName(entry.familyName);
    return faults;
}

SignInFaults missingName() {
    SignInFaults faults;
    faults.givenName = u"Enter your name: there is no account with this e-mail address yet."_s;
    return faults;
}

// The form switches the browser's own checks off: its bubbles vanish, and say nothing about the fields beside the first.
Reply signInForm(const AuthorizationRequest &request, const SignInEntry &entry, const SignInFaults &faults) {
    Html hidden;
    for (const auto &[name, value] : fieldsOf(request))
        hidden += hiddenInput(name, value);
    HtmlValues values = {{u"request"_s, hidden}};
    fill(values,
         {Field{kEmail, entry.email, faults.email}, Field{kGivenName, entry.givenName, faults.givenName},
          Field{kFamilyName, entry.familyName, faults.familyName}});
    const Html content = filled(u"sign_in.html"_s, values);
    if (faults.isEmpty())
        return pageReply(200, u"Sign in – Velmo"_s, content);
    return pageReply(422, u"Error: Sign in – Velmo"_s, content);
}

Reply continuePage(const SignInAnswer &answer, const QString &email) {
    Html hidden = hiddenInput(u"id_token"_s, answer.idToken);
    hidden += hiddenInput(u"state"_s, answer.state);
    if (!answer.user.isEmpty())
        hidden += hiddenInput(u"user"_s, answer.user);
    return pageReply(
        200, u"Signed in – Velmo"_s,
        filled(u"continue.html"_s,
               {{u"email"_s, email}, {u"callback"_s, QString(kCallbackPath)}, {u"answer"_s, hidden}}));
}

} // namespace velmo::localservice
