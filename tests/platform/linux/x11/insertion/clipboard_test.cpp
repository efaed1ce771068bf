#include "platform/linux/x11/insertion/clipboard_user.h"
#include "platform/linux/x11/server/connection.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

using ::testing::ElementsAre;
using ::testing::SizeIs;

namespace velmo {

namespace {

/// A program that asks for selections word by word.
class RawClient {
public:
    explicit RawClient(const QString &display)
        : m_connection(std::move(*x11::Connection::open(display))),
          m_window(m_connection->createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE)) {}

    void setNumbers(const char *property, const char *type, const std::vector<uint32_t> &numbers) {
        xcb_change_property(m_connection->xcb(), XCB_PROP_MODE_REPLACE, m_window, atom(property), atom(type),
                            32, static_cast<uint32_t>(numbers.size()), numbers.data());
    }

    /// The answer in the property; none when the owner refuses.
    QByteArray ask(const char *target, xcb_timestamp_t time = XCB_CURRENT_TIME) {
        xcb_convert_selection(m_connection->xcb(), m_window, atom("CLIPBOARD"), atom(target), atom("ANSWER"),
                              time);
        const auto event = next(XCB_SELECTION_NOTIFY);
        return x11::as<xcb_selection_notify_event_t>(*event).property == XCB_ATOM_NONE ? QByteArray()
                                                                                       : take("ANSWER");
    }

    QByteArray take(const char *property) {
        const auto cookie = xcb_get_property(m_connection->xcb(), 1, m_window, atom(property),
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, 1 << 20);
        const x11::Owned<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(m_connection->xcb(), cookie, nullptr));
        return {static_cast<const char *>(xcb_get_property_value(reply.get())),
                xcb_get_property_value_length(reply.get())};
    }

    xcb_timestamp_t serverTime() {
        setNumbers("TIME", "INTEGER", {});
        return x11::as<xcb_property_notify_event_t>(*next(XCB_PROPERTY_NOTIFY)).time;
    }

    static std::vector<uint32_t> numbersIn(const QByteArray &bytes) {
        const auto *first = reinterpret_cast<const uint32_t *>(bytes.constData());
        return {first, first + bytes.size() / 4};
    }

    x11::Owned<xcb_generic_event_t> next(int kind) {
        xcb_flush(m_connection->xcb());
        for (;;) {
            x11::Owned<xcb_generic_event_t> event(xcb_wait_for_event(m_connection->xcb()));
            if (!event || x11::kindOf(*event) == kind)
                return event;
        }
    }

    xcb_atom_t atom(const char *name) { return m_connection->atom(name); }
    [[nodiscard]] x11::Connection &connection() { return *m_connection; }
    [[nodiscard]] xcb_window_t window() const { return m_window; }

private:
    std::unique_ptr<x11::Connection> m_connection;
    xcb_window_t m_window;
};

class X11ClipboardTest : public testing::ClipboardUser<testing::X11Desktop> {};

TEST_F(X11ClipboardTest, OffersATextInTheFormatsProgramsAskFor) {
    open();
    ASSERT_TRUE(setText(save().changeCount, u"blå 😀"_s));
    for (const char *format : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT"})
        EXPECT_EQ(paste(format), "blå 😀") << format;
    EXPECT_EQ(paste("STRING"), "bl\xe5 ??");
    EXPECT_EQ(paste("text/html"), "");
    EXPECT_TRUE(waitFor([this] { return readings == 5; }));
    EXPECT_EQ(paste("x-kde-passwordManagerHint"), "secret");
    EXPECT_EQ(paste("application/x-copyq-hidden"), "1");
    settle();
    EXPECT_EQ(readings, 5) << "a mark is not the text";
}

TEST_F(X11ClipboardTest, OffersAllOfUnicode) {
    QString text;
    for (char32_t code = 1; code <= 0x10ffff; ++code) {
        if (!QChar::isSurrogate(code))
            text += QStringView(QChar::fromUcs4(code));
    }
    open();
    ASSERT_TRUE(setText(save().changeCount, text));
    EXPECT_EQ(paste(), text.toUtf8());
    EXPECT_TRUE(waitFor([this] { return readings == 1; }));
}

TEST_F(X11ClipboardTest, AnswersQuestionsAboutTheSelection) {
    open();
    ASSERT_TRUE(setText(save().changeCount, u"text"_s));
    RawClient client(server.display());
    const auto targets = RawClient::numbersIn(client.ask("TARGETS"));
    for (const char *target : {"TARGETS", "MULTIPLE", "TIMESTAMP", "UTF8_STRING", "STRING"})
        EXPECT_THAT(targets, ::testing::Contains(client.atom(target))) << target;
    EXPECT_THAT(RawClient::numbersIn(client.ask("TIMESTAMP")), ElementsAre(::testing::Gt(0u)));

    client.setNumbers("ANSWER", "ATOM_PAIR",
                      {client.atom("UTF8_STRING"), client.atom("FIRST"), client.atom("image/png"),
                       client.atom("SECOND"), client.atom("TEXT"), client.atom("THIRD")});
    EXPECT_THAT(RawClient::numbersIn(client.ask("MULTIPLE")),
                ElementsAre(client.atom("UTF8_STRING"), client.atom("FIRST"), client.atom("image/png"), 0u,
                            client.atom("TEXT"), client.atom("THIRD")));
    EXPECT_EQ(client.take("FIRST"), "text");
    EXPECT_EQ(client.take("THIRD"), "text");
    EXPECT_TRUE(waitFor([this] { return readings == 2; }));
}

TEST_F(X11ClipboardTest, AnswersALateProgramWithWhatWasThereAtItsTime) {
    open();
    const auto count = setText(save().changeCount, u"dictated"_s);
    ASSERT_TRUE(count);
    RawClient client(server.display());
    const xcb_timestamp_t keysPressed = client.serverTime();
    while (client.serverTime() == keysPressed)
        ;
    ASSERT_TRUE(setItems(*count, {{u"UTF8_STRING"_s, "kept"}}));
    EXPECT_EQ(client.ask("UTF8_STRING", keysPressed), "dictated");
    EXPECT_EQ(client.ask("UTF8_STRING", client.serverTime()), "kept");
    EXPECT_EQ(client.ask("UTF8_STRING"), "kept");
}

TEST_F(X11ClipboardTest, ForgetsAProgramThatEndsInTheMiddle) {
    open();
    const QString text = u"0123456789"_s.repeated(100'000);
    ASSERT_TRUE(setText(save().changeCount, text));
    {
        RawClient client(server.display());
        EXPECT_THAT(client.ask("UTF8_STRING"), SizeIs(4)); // the announcement of pieces
        static_cast<void>(client.next(XCB_PROPERTY_NOTIFY));
    }
    EXPECT_EQ(paste(), text.toUtf8());
    EXPECT_TRUE(waitFor([this] { return readings == 1; }));
}

TEST_F(X11ClipboardTest, KeepsTheTextWhenTheRestIsTooLarge) {
    testing::Puppet owner(server, u"owner"_s);
    owner.tell("offer-large");
    EXPECT_EQ(lineOf(owner), "offered");
    open({std::chrono::seconds(30), 1'000'000});
    QStringList types;
    for (const ClipboardItem &item : save().items) {
        types.append(item.type);
        EXPECT_EQ(item.data, "small") << item.type.toStdString();
    }
    EXPECT_THAT(types, ::testing::Contains(u"UTF8_STRING"_s));
    ASSERT_THAT(log.lines(), SizeIs(1));
    EXPECT_TRUE(
        log.lines()[0].startsWith(u"🎙️ [Insert] The clipboard could be kept only in part: 1 of "_s));
}

TEST_F(X11ClipboardTest, HandsOverToAClipboardManager) {
    open();
    RawClient manager(server.display());
    xcb_set_selection_owner(manager.connection().xcb(), manager.window(), manager.atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    xcb_flush(manager.connection().xcb());
    ASSERT_TRUE(setItems(save().changeCount, {{u"UTF8_STRING"_s, "kept"}}));
    bool handedOver = false;
    x11->clipboard().handOver([&handedOver] { handedOver = true; });
    const auto event = manager.next(XCB_SELECTION_REQUEST);
    const auto &request = x11::as<xcb_selection_request_event_t>(*event);
    EXPECT_EQ(request.target, manager.atom("SAVE_TARGETS"));
    EXPECT_EQ(manager.ask("UTF8_STRING"), "kept");
    settle();
    EXPECT_FALSE(handedOver);

    std::array<char, 32> bytes{};
    xcb_selection_notify_event_t answer{
        XCB_SELECTION_NOTIFY, 0, 0, request.time, request.requestor, request.selection, request.target,
        request.property};
    std::memcpy(bytes.data(), &answer, sizeof answer);
    xcb_send_event(manager.connection().xcb(), 0, request.requestor, 0, bytes.data());
    xcb_flush(manager.connection().xcb());
    EXPECT_TRUE(waitFor([&handedOver] { return handedOver; }));
}

} // namespace

} // namespace velmo
