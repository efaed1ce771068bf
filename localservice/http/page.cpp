#include "localservice/http/page.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// The colours, sizes and states are those of the application's windows. Lengths that hold text are in rem, so the page
// grows with the reader's own text size.
constexpr const char *kStyle = R"(
:root { color-scheme: light; }
* { box-sizing: border-box; }
body {
  margin: 0; min-height: 100vh; padding: 1.5rem 1rem;
  display: flex; align-items: center; justify-content: center;
  background: #EDEDF2; color: #121212;
  font: 400 0.875rem/1.25rem Inter, system-ui, sans-serif;
}
main {
  width: 100%; max-width: 25rem; padding: 1.5rem;
  background: #FFFFFF; border: 1px solid rgba(18, 18, 18, 0.08); border-radius: 12px;
}
h1 { margin: 0 0 0.5rem; font-size: 1.5rem; line-height: 2rem; font-weight: 700; letter-spacing: -0.01em; }
p { margin: 0 0 1rem; color: #545454; overflow-wrap: anywhere; }
p:last-child { margin-bottom: 0; }
strong { color: #121212; font-weight: 600; }
label { display: block; margin-bottom: 0.25rem; font-weight: 500; }
.field { margin-bottom: 1rem; }
.names { display: flex; flex-wrap: wrap; column-gap: 0.75rem; }
.names .field { flex: 1 1 9rem; min-width: 0; }
fieldset { margin: 0; padding: 0; border: 0; min-width: 0; }
legend { padding: 0; margin-bottom: 0.5rem; color: #545454; }
input {
  width: 100%; min-height: 2.25rem; padding: 0.375rem 0.75rem;
  font: inherit; color: inherit; background: #F5F5F7;
  border: 1px solid #85858B; border-radius: 10px;
}
input:focus { background: #FFFFFF; outline: 2px solid #1A7A4A; outline-offset: -1px; border-color: #1A7A4A; }
input[aria-invalid] { border-color: #A84B00; }
input[aria-invalid]:focus { border-color: #A84B00; outline-offset: 2px; }
.error { margin: 0.25rem 0 0; color: #A84B00; }
.error::before { content: "⚠\FE0E  "; }
.notice { margin-bottom: 1rem; padding: 0.5rem 0.75rem; border-left: 3px solid #A84B00; background: #FDF3EA; color: #121212; }
button {
  width: 100%; min-height: 2.5rem; padding: 0.5rem 1rem;
  font: inherit; font-weight: 600; color: #FFFFFF; background: #1A7A4A;
  border: 1px solid transparent; border-radius: 10px; cursor: pointer;
}
button:hover { background: #16683F; }
button:active { background: #125634; }
button:focus-visible { outline: 2px solid #1A7A4A; outline-offset: 2px; }
form + p { margin-top: 1rem; }
@media (max-width: 20rem) {
  body { padding: 0; }
  main { padding: 1rem; border-radius: 0; }
}
)";

constexpr const char *kFrame = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>%1</title>
<style>%2</style>
</head>
<body>
<main>
%3
</main>
</body>
</html>
)";

QByteArray contentSecurityPolicy() {
    const QByteArray style = QCryptographicHash::hash(kStyle, QCryptographicHash::Sha256).toBase64();
    // Browsers hold a form's redirects to form-action as well, hence Velmo's own scheme.
    return "default-src 'none'; style-src 'sha256-" + style +
           "'; form-action 'self' velmo:; frame-ancestors 'none'; base-uri 'none'";
}

} // namespace

Reply pageReply(int status, const QString &title, const QString &content) {
    const QString page =
        QString::fromUtf8(kFrame).arg(title.toHtmlEscaped(), QString::fromUtf8(kStyle), content);
    return {status,
            {},
            {{"Content-Security-Policy", contentSecurityPolicy()},
             {"X-Frame-Options", "DENY"},
             // "no-referrer" would make browsers send "Origin: null" with our own forms.
             {"Referrer-Policy", "same-origin"}},
            page.toUtf8()};
}

Reply faultPage(int status, const QString &sentence) {
    return pageReply(status, u"Sign-in failed – Velmo"_s,
                     u"<h1>Sign-in failed</h1>\n<p class=\"notice\" role=\"alert\">%1</p>\n"
                     "<p>Close this page and start again from Velmo.</p>"_s.arg(sentence.toHtmlEscaped()));
}

} // namespace velmo::localservice
