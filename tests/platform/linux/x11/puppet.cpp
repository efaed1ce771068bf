// A program of the desktop that does what a test tells it, written with another implementation of selections than
// the one under test. One word on its standard input is one command; it answers with a line each.
//
//   offer        puts plain text, rich text, a picture and something of its own on the clipboard  -> "offered"
//   offer-large  puts three million bytes and a text on the clipboard                             -> "offered"
//   read         reads the clipboard's text                                                       -> base64 of UTF-8
//   watch        reads the text whenever the clipboard changes, as a manager does                 -> "watches"
//                and then each text, as above
//
// Each shortcut that is pressed in its window is a line too: "Ctrl+V". The argument is the title of the window.

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMimeData>
#include <QRasterWindow>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <map>
#include <string>

using namespace Qt::StringLiterals;

namespace {

void say(const QByteArray &line) {
    std::puts(line.constData());
    std::fflush(stdout);
}

class Window final : public QRasterWindow {
protected:
    void keyPressEvent(QKeyEvent *event) override {
        if (event->key() < Qt::Key_Shift || event->key() > Qt::Key_unknown)
            say(QKeySequence(event->keyCombination()).toString(QKeySequence::PortableText).toUtf8());
    }
};

void offer() {
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::darkGreen);
    auto *data = new QMimeData;
    data->setData(u"application/x-velmo-test"_s, QByteArray("\0\1\2\377", 4));
    data->setHtml(u"<b>blåbær</b>"_s);
    data->setText(u"blåbær"_s);
    data->setImageData(picture);
    QGuiApplication::clipboard()->setMimeData(data);
    say("offered");
}

void offerLarge() {
    auto *data = new QMimeData;
    data->setData(u"application/x-velmo-large"_s, QByteArray(3'000'000, 'x'));
    data->setText(u"small"_s);
    QGuiApplication::clipboard()->setMimeData(data);
    say("offered");
}

void read() {
    say(QGuiApplication::clipboard()->text().toUtf8().toBase64());
}

void watch() {
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, read);
    say("watches");
}

void obey(const std::string &command) {
    static const std::map<std::string, void (*)()> commands = {
        {"offer", offer}, {"offer-large", offerLarge}, {"read", read}, {"watch", watch}};
    if (const auto found = commands.find(command); found != commands.end())
        found->second();
}

void takeCommands() {
    do {
        std::string command;
        if (!std::getline(std::cin, command)) {
            QGuiApplication::quit();
            return;
        }
        obey(command);
    } while (std::cin.rdbuf()->in_avail() > 0);
}

} // namespace

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    Window window;
    window.resize(300, 200);
    window.setTitle(QGuiApplication::arguments().value(1));
    window.show();
    const QSocketNotifier commands(0, QSocketNotifier::Read);
    QObject::connect(&commands, &QSocketNotifier::activated, takeCommands);
    return QGuiApplication::exec();
}
