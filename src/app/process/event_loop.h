#pragma once

#include <functional>
#include <optional>

namespace velmo {

/// What is called once when something is done.
using Done = std::function<void()>;

/// Begins something and runs the event loop until it is done, which it may be at once. Main thread.
void awaitDone(const std::function<void(const Done &done)> &begin);

/// The same for something that ends with an answer, which is handed out.
template <class Answer>
[[nodiscard]] Answer awaitAnswer(const std::function<void(std::function<void(const Answer &)>)> &begin) {
    std::optional<Answer> given;
    awaitDone([&](const Done &done) {
        begin([&given, done](const Answer &answer) {
            given = answer;
            done();
        });
    });
    return *given;
}

} // namespace velmo
