#include "desks/speech_desk.h"
#include "page_view.h"
#include "stage.h"

#include "store/preference_keys.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo::screenshots {

namespace {

/// The afternoon of the other pictures.
constexpr auto kAfternoon = 1794841200s;

/// A service with models, one of them in use.
struct SpeechDesk : testing::SpeechDesk {
    SpeechDesk() {
        stage.queue.setNow(Date(kAfternoon));
        service.runsWhisper();
        sayModels({});
        sayLanguageModel({});
    }

    /// `more` are members beside the models, `ofBase` of the model base.
    void sayModels(const QByteArray &more, const QByteArray &ofBase = R"(,"installed":true,"inUse":true)") {
        service.server.answer(
            "/api/models", 200,
            R"({"models":[)"
            R"({"name":"tiny","bytes":77691713,"languages":"99 languages"},)"
            R"({"name":"base","bytes":147951465,"languages":"99 languages")" +
                ofBase + "}," +
                R"({"name":"small","bytes":487601967,"languages":"99 languages"},)"
                R"({"name":"nb-small","bytes":487601967,"languages":"Norwegian","source":"the National Library of Norway","page":"https://velmo.example/"}])" +
                more + '}');
    }
    void sayLanguageModel(const QByteArray &members) {
        service.server.answer(
            "/api/language-model", 200,
            '{' + members +
                R"("found":[{"name":"Ollama","address":"http://127.0.0.1:11434","models":["llama3"]}]})");
    }
    void runPocketSphinx() {
        service.runs(R"("engine":"PocketSphinx")", R"("en")");
        stage.preferences.set(keys::selectedLanguages, u"no,sv,en"_s);
        stage.watch.noteWrite();
        stage.queue.runPosted();
    }
};

Scene scene(const QString &name, QSize size, const std::function<void(SpeechDesk &)> &set = {},
            const std::function<void(SpeechDesk &, PageView &)> &then = {}) {
    return {name, [=](Stage &stage) {
                SpeechDesk desk;
                if (set)
                    set(desk);
                PageView page(stage.engine(), MainWindowView::Speech, {.speech = &desk.view}, size);
                desk.settle();
                if (then)
                    then(desk, page);
                desk.settle();
                stage.photograph(page.window(), name);
            }};
}

} // namespace

QList<Scene> speechScenes() {
    const QSize ordinary = PageView::ordinarySize;
    const QSize whole(900, 1140);
    return {
        scene(u"speech"_s, ordinary),
        scene(u"speech-min"_s, PageView::smallestSize,
              [](SpeechDesk &desk) {
                  desk.runPocketSphinx();
                  desk.sayModels({}, {});
              }),
        scene(u"speech-full"_s, whole),
        scene(
            u"speech-download"_s, whole,
            [](SpeechDesk &desk) {
                desk.runPocketSphinx();
                desk.sayModels(
                    R"(,"download":{"name":"small","received":212000000,"bytes":487601967,"bytesPerSecond":4100000})",
                    {});
            }),
        scene(
            u"speech-address"_s, whole,
            [](SpeechDesk &desk) {
                desk.sayModels(
                    R"(,"failure":"The file is not what its publisher made: the checksum differs.")");
            },
            [](SpeechDesk &desk, PageView &) { desk.view.chooseLanguageModel(2); }),
        scene(u"speech-silent"_s, ordinary,
              [](SpeechDesk &desk) {
                  desk.service.server.react("/health", {{{}, testing::Reaction::Then::Close}});
              }),
        scene(u"speech-trial"_s, ordinary, {},
              [](SpeechDesk &desk, PageView &page) {
                  desk.trial.toggle();
                  desk.stage.queue.advance(3s);
                  desk.trial.toggle();
                  desk.stage.queue.advance(400ms);
                  desk.stage.transcriber.complete(Transcript{u"Hei"_s, std::nullopt});
                  desk.stage.queue.runPosted();
                  desk.stage.processor.complete({u"Hei"_s});
                  desk.stage.queue.runPosted();
                  for (int tabs = 0; tabs < 2; ++tabs)
                      page.press(Qt::Key_Tab);
                  page.type(u"Kan du sende meg referatet fra møtet i går?"_s);
              }),
        scene(u"speech-listening"_s, ordinary, {},
              [](SpeechDesk &desk, PageView &) {
                  desk.trial.toggle();
                  desk.stage.queue.runPosted();
              }),
    };
}

} // namespace velmo::screenshots
