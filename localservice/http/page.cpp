#include "localservice/http/page.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

QByteArray contentSecurityPolicy(const QString &style) {
    const QByteArray hash = QCryptographicHash::hash(style.toUtf8(), QCryptographicHash::Sha256).toBase64();
    // Browsers hold a form's redirects to form-action as well, hence Velmo's own scheme.
    return "default-src 'none'; style-src 'sha256-" + hash +
           "'; form-action 'self' velmo:; frame-ancestors 'none'; base-uri 'none'";
}

} // namespace

Reply pageReply(int status, const QString &title, const Html &content) {
    const QString style = pageResource(u"page.css"_s);
    const Html page =
        filled(u"page.html"_s, {{u"title"_s, title}, {u"style"_s, Html{style}}, {u"content"_s, content}});
    return {status,
            {},
            {{"Content-Security-Policy", contentSecurityPolicy(style)},
             {"X-Frame-Options", "DENY"},
             // "no-referrer" would make browsers send "Origin: null" with our own forms.
             {"Referrer-Policy", "same-origin"}},
            page.source.toUtf8()};
}

Reply faultPage(int status, const QString &sentence) {
    return pageReply(status, u"Sign-in failed – Velmo"_s,
                     filled(u"fault.html"_s, {{u"sentence"_s, sentence}}));
}

} // namespace velmo::localservice
