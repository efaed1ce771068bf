#pragma once

#include "platform/linux/x11/insertion/insertion_desktop.h"

namespace velmo::testing {

class X11Desktop : public InsertionDesktop {
protected:
    [[nodiscard]] Clipboard &clipboard() { return x11->clipboard(); }
    void somebodyCopies(const QByteArray &text) { m_owners.push_back(copy(text)); }
    [[nodiscard]] QByteArray somebodyPastes() { return paste(); }

private:
    std::vector<std::unique_ptr<DisplayProgram>> m_owners;
};

/// Somebody who uses the clipboard of a desktop as insertion does.
template <class Desktop>
class ClipboardUser : public Desktop {
protected:
    using Changed = std::optional<Clipboard::ChangeCount>;

    Clipboard::Saved save() {
        return answerOf<Clipboard::Saved>([this](auto done) { this->clipboard().save(std::move(done)); });
    }
    Changed setText(Clipboard::ChangeCount expected, const QString &text) {
        return answerOf<Changed>([&](auto done) {
            this->clipboard().setText(expected, text,
                                      {[this](DisplayClient) { ++readings; }, [this] { ++losses; }},
                                      std::move(done));
        });
    }
    Changed setItems(Clipboard::ChangeCount expected, const std::vector<ClipboardItem> &items) {
        return answerOf<Changed>(
            [&](auto done) { this->clipboard().setItems(expected, items, std::move(done)); });
    }

    int readings = 0;
    int losses = 0;

private:
    template <class Answer>
    Answer answerOf(const std::function<void(std::function<void(Answer)>)> &question) {
        std::optional<Answer> answer;
        question([&answer](const Answer &given) { answer = given; });
        EXPECT_FALSE(answer) << "an answer is a task of the queue";
        EXPECT_TRUE(this->waitFor([&answer] { return answer.has_value(); }));
        return answer.value_or(Answer());
    }
};

} // namespace velmo::testing
