#include "platform/linux/secret_service/secret_service_keychain.h"

#include "base/interface.h"
#include "platform/linux/secret_service/call_context.h"
#include "platform/linux/secret_service/deadline.h"
#include "platform/linux/session_bus_presence.h"

#include <libsecret/secret.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// GLib's error of a call that takes one.
class CallError : private Unmovable {
public:
    ~CallError() { g_clear_error(&m_error); }

    [[nodiscard]] GError **out() { return &m_error; }
    [[nodiscard]] bool isSet() const { return m_error != nullptr; }
    [[nodiscard]] bool isLocked() const {
        return g_error_matches(m_error, SECRET_ERROR, SECRET_ERROR_IS_LOCKED);
    }

    [[nodiscard]] bool isAbsence() const {
        return g_error_matches(m_error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) ||
               g_error_matches(m_error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER) ||
               m_error->domain == G_IO_ERROR;
    }

    [[nodiscard]] QString message() const { return QString::fromUtf8(m_error->message); }

private:
    GError *m_error = nullptr;
};

KeychainFailure lockedFailure() {
    return {u"The keyring is locked."_s};
}

KeychainFailure absentFailure() {
    return {u"This session has no keyring."_s};
}

KeychainFailure failureOf(const CallError &error, const Deadline &deadline) {
    if (deadline.isOver())
        return {u"The keyring does not answer."_s};
    if (error.isLocked())
        return lockedFailure();
    if (error.isAbsence())
        return absentFailure();
    return {u"The keyring failed: "_s + error.message()};
}

OwnedTable attributesOf(const QString &account) {
    OwnedTable table(g_hash_table_new_full(g_str_hash, g_str_equal, nullptr, g_free));
    static char name[] = "account";
    g_hash_table_insert(table.get(), name, g_strdup(account.toUtf8().constData()));
    return table;
}

/// The service is the process's own copy with one session, made at first use: a session for every call would pile up
/// in the keyring.
Result<OwnedObject<SecretService>, KeychainFailure> service(const Deadline &deadline) {
    if (!hasSessionBus())
        return failed(absentFailure());
    CallError error;
    // GLib ends the whole process with a bus that goes away, unless told not to.
    const OwnedObject<GDBusConnection> bus(
        g_bus_get_sync(G_BUS_TYPE_SESSION, deadline.cancellable(), error.out()));
    if (!bus)
        return failed(failureOf(error, deadline));
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    OwnedObject<SecretService> service(
        secret_service_get_sync(SECRET_SERVICE_OPEN_SESSION, deadline.cancellable(), error.out()));
    if (!service)
        return failed(failureOf(error, deadline));
    return service;
}

/// Neither asks for a password nor for more than `SecretSearchFlags` says.
Result<OwnedObjectList, KeychainFailure> itemsOf(SecretService *service, const QString &account,
                                                 SecretSearchFlags flags, const Deadline &deadline) {
    CallError error;
    OwnedObjectList items(secret_service_search_sync(service, nullptr, attributesOf(account).get(), flags,
                                                     deadline.cancellable(), error.out()));
    if (error.isSet())
        return failed(failureOf(error, deadline));
    return items;
}

std::optional<QByteArray> secretOf(SecretItem *item) {
    SecretValue *value = secret_item_get_secret(item);
    if (value == nullptr)
        return std::nullopt;
    gsize length = 0;
    const gchar *bytes = secret_value_get(value, &length);
    QByteArray secret(bytes, static_cast<qsizetype>(length));
    secret_value_unref(value);
    return secret;
}

using ReadResult = Result<std::optional<QByteArray>, KeychainFailure>;
using ChangeResult = Result<void, KeychainFailure>;

ReadResult tryRead(const QString &account, const Deadline &deadline) {
    auto secrets = service(deadline);
    if (!secrets)
        return failed(std::move(secrets.error()));
    const auto flags = static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS);
    const auto items = itemsOf(secrets->get(), account, flags, deadline);
    if (!items)
        return failed(items.error());
    for (const GList *item = items->get(); item != nullptr; item = item->next) {
        if (auto secret = secretOf(SECRET_ITEM(item->data)))
            return secret;
    }
    if (*items)
        return failed(lockedFailure());
    return std::nullopt;
}

ChangeResult tryAdd(const QString &account, const QByteArray &secret, const QString &label,
                    const Deadline &deadline) {
    auto secrets = service(deadline);
    if (!secrets)
        return failed(std::move(secrets.error()));
    CallError error;
    const OwnedObject<SecretCollection> keyring(
        secret_collection_for_alias_sync(secrets->get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE,
                                         deadline.cancellable(), error.out()));
    if (error.isSet())
        return failed(failureOf(error, deadline));
    if (!keyring)
        return failed(KeychainFailure{u"There is no default keyring."_s});
    if (secret_collection_get_locked(keyring.get()) != FALSE)
        return failed(lockedFailure());
    SecretValue *value = secret_value_new(secret.constData(), secret.size(), "text/plain");
    const OwnedObject<SecretItem> item(secret_item_create_sync(
        keyring.get(), nullptr, attributesOf(account).get(), label.toUtf8().constData(), value,
        SECRET_ITEM_CREATE_REPLACE, deadline.cancellable(), error.out()));
    secret_value_unref(value);
    if (!item)
        return failed(failureOf(error, deadline));
    return {};
}

ChangeResult tryRemove(const QString &account, const Deadline &deadline) {
    auto secrets = service(deadline);
    if (!secrets)
        return failed(std::move(secrets.error()));
    const auto items = itemsOf(secrets->get(), account, SECRET_SEARCH_ALL, deadline);
    if (!items)
        return failed(items.error());
    for (const GList *item = items->get(); item != nullptr; item = item->next) {
        if (secret_item_get_locked(SECRET_ITEM(item->data)) != FALSE)
            return failed(lockedFailure());
        CallError error;
        secret_item_delete_sync(SECRET_ITEM(item->data), deadline.cancellable(), error.out());
        if (error.isSet())
            return failed(failureOf(error, deadline));
    }
    return {};
}

/// A keyring that was started anew does not know our session any more, so a first failure may be of the past.
template <class Attempt>
auto withFreshSession(const Deadline &deadline, const Attempt &attempt) {
    const CallContext context;
    auto result = attempt();
    if (result || deadline.isOver())
        return result;
    secret_service_disconnect();
    return attempt();
}

} // namespace

SecretServiceKeychain::SecretServiceKeychain(QString label, std::chrono::milliseconds patience)
    : m_label(std::move(label)), m_patience(patience) {}

ReadResult SecretServiceKeychain::read(const QString &account) {
    const Deadline deadline(m_patience);
    return withFreshSession(deadline, [&] { return tryRead(account, deadline); });
}

ChangeResult SecretServiceKeychain::add(const QString &account, const QByteArray &secret) {
    const Deadline deadline(m_patience);
    return withFreshSession(deadline, [&] { return tryAdd(account, secret, m_label, deadline); });
}

ChangeResult SecretServiceKeychain::remove(const QString &account) {
    const Deadline deadline(m_patience);
    return withFreshSession(deadline, [&] { return tryRemove(account, deadline); });
}

} // namespace velmo
