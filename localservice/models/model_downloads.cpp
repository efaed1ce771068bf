#include "localservice/models/model_downloads.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

ModelDownloads::~ModelDownloads() {
    m_isCancelled = true;
    if (m_thread.joinable())
        m_thread.join();
}

Result<void, Refusal> ModelDownloads::get(const QString &name) {
    const auto model = catalogueModel(name);
    if (!model)
        return failed(Refusal{404, u"There is no model \"%1\" in the catalogue."_s.arg(name)});
    if (!model->canBeDownloaded())
        return failed(
            Refusal{422, u"The checksum of \"%1\" is not known here, so it is not fetched for you. Its "
                         "publisher has it at %2."_s.arg(name, model->source)});
    const std::lock_guard lock(m_mutex);
    if (m_running)
        return failed(Refusal{409, u"The model \"%1\" is on its way already."_s.arg(m_running->name)});
    if (m_thread.joinable())
        m_thread.join(); // it has said that it is done
    m_isCancelled = false;
    m_failure = QString();
    m_running = Running{name, {0, model->size}, 0};
    m_began = Clock::now();
    m_before.reset();
    m_thread = std::thread([this, model = *model] { run(model); });
    return {};
}

void ModelDownloads::run(const CatalogueModel &model) {
    const auto got =
        ModelInstaller(m_store).get(model, m_address.isEmpty() ? model.source : m_address,
                                    [this](const DownloadProgress &progress) { return note(progress); });
    const std::lock_guard lock(m_mutex);
    m_running.reset();
    if (!got && !m_isCancelled)
        m_failure = got.error();
}

bool ModelDownloads::note(const DownloadProgress &progress) {
    const std::lock_guard lock(m_mutex);
    if (!m_before)
        m_before = progress.received;
    m_running->progress.received = progress.received;
    if (progress.total > 0)
        m_running->progress.total = progress.total;
    const std::chrono::duration<double> took = Clock::now() - m_began;
    m_running->bytesPerSecond =
        static_cast<double>(progress.received - *m_before) / std::max(took.count(), 0.001);
    return !m_isCancelled;
}

void ModelDownloads::cancel() {
    m_isCancelled = true;
}

std::optional<ModelDownloads::Running> ModelDownloads::running() const {
    const std::lock_guard lock(m_mutex);
    return m_running;
}

QString ModelDownloads::failure() const {
    const std::lock_guard lock(m_mutex);
    return m_failure;
}

} // namespace velmo::localservice
