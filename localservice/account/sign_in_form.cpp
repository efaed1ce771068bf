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

struct Field {
    QString name;
    QString label;
    QString attributes;
    QString value;
    std::optional<QString> fault;
};

QString hiddenInput(const QString &name, const QString &value) {
    return u"<input type=\"hidden\" name=\"%1\" value=\"%2\">\n"_s.arg(name, value.toHtmlEscaped());
}

QString faultAttributes(const Field &field) {
    if (!field.fault)
        return {};
    return u" aria-invalid=\"true\" aria-describedby=\"%1-error\""_s.arg(field.name);
}

QString faultLine(const Field &field) {
    if (!field.fault)
        return {};
    return u"<p class=\"error\" id=\"%1-error\">%2</p>\n"_s.arg(field.name, field.fault->toHtmlEscaped());
}

QString fieldHtml(const Field &field) {
    return u"<div class=\"field\">\n<label for=\"%1\">%2</label>\n"
           "<input id=\"%1\" name=\"%1\" value=\"%3\" %4%5>\n%6</div>\n"_s.arg(
               field.name, field.label, field.value.toHtmlEscaped(), field.attributes, faultAttributes(field),
               faultLine(field));
}

/// The first field at fault gets the cursor, the first of all when there is none.
void giveFocus(std::array<Field, 3> &fields) {
    auto chosen = std::find_if(fields.begin(), fields.end(), [](const Field &field) { return field.fault; });
    if (chosen == fields.end())
        chosen = fields.begin();
    chosen->attributes += u" autofocus"_s;
}

std::array<Field, 3> fieldsFor(const SignInEntry &entry, const SignInFaults &faults) {
    std::array<Field, 3> fields = {
        Field{kEmail, u"E-mail"_s,
              u"type=\"email\" autocomplete=\"email\" autocapitalize=\"none\" spellcheck=\"false\" "
              "required"_s,
              entry.email, faults.email},
        Field{kGivenName, u"First name"_s,
              u"type=\"text\" autocomplete=\"given-name\" spellcheck=\"false\""_s, entry.givenName,
              faults.givenName},
        Field{kFamilyName, u"Last name (optional)"_s,
              u"type=\"text\" autocomplete=\"family-name\" spellcheck=\"false\""_s, entry.familyName,
              faults.familyName}};
    giveFocus(fields);
    return fields;
}

// The browser's own checks are off: its bubbles vanish, and say nothing about the fields beside the first.
constexpr const char *kForm = R"(<h1>Sign in to Velmo</h1>
<p>This page belongs to your own local service. Your dictionary, snippets and statistics stay on this machine, and your e-mail
address only tells accounts apart: there is no password, and no mail is sent.</p>
<form method="post" action="/auth/authorize" novalidate>
%1%2<fieldset>
<legend>Your name, the first time you sign in</legend>
<div class="names">
%3%4</div>
</fieldset>
<button type="submit">Sign In</button>
</form>)";

constexpr const char *kContinue = R"(<h1>Continue in Velmo</h1>
<p>You sign in as <strong>%1</strong>.</p>
<form method="post" action="%2">
%3<button type="submit" autofocus>Open Velmo</button>
</form>
<p>If the browser asks, allow it to open Velmo. Then you can close this page. The button works once, within five
minutes.</p>)";

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

Reply signInForm(const AuthorizationRequest &request, const SignInEntry &entry, const SignInFaults &faults) {
    QString hidden;
    for (const auto &[name, value] : fieldsOf(request))
        hidden += hiddenInput(name, value);
    QStringList fields;
    for (const Field &field : fieldsFor(entry, faults))
        fields.append(fieldHtml(field));
    const QString content = QString::fromUtf8(kForm).arg(hidden, fields[0], fields[1], fields[2]);
    if (faults.isEmpty())
        return pageReply(200, u"Sign in – Velmo"_s, content);
    return pageReply(422, u"Error: Sign in – Velmo"_s, content);
}

Reply continuePage(const SignInAnswer &answer, const QString &email) {
    QString hidden = hiddenInput(u"id_token"_s, answer.idToken) + hiddenInput(u"state"_s, answer.state);
    if (!answer.user.isEmpty())
        hidden += hiddenInput(u"user"_s, answer.user);
    return pageReply(200, u"Signed in – Velmo"_s,
                     QString::fromUtf8(kContinue).arg(email.toHtmlEscaped(), QString(kCallbackPath), hidden));
}

} // namespace velmo::localservice
