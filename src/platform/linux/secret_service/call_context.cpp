#include "platform/linux/secret_service/call_context.h"

#include <mutex>
#include <vector>

namespace velmo {

namespace {

/// Contexts between two calls: as many as there were calls at a time. Never freed, as what is left in them would be
/// lost.
class SpareContexts {
public:
    static SpareContexts &shared() {
        static auto *const contexts = new SpareContexts;
        return *contexts;
    }

    GMainContext *take() {
        const std::lock_guard lock(m_mutex);
        if (m_contexts.empty())
            return g_main_context_new();
        GMainContext *const context = m_contexts.back();
        m_contexts.pop_back();
        return context;
    }

    void putBack(GMainContext *context) {
        const std::lock_guard lock(m_mutex);
        m_contexts.push_back(context);
    }

private:
    std::mutex m_mutex;
    std::vector<GMainContext *> m_contexts;
};

} // namespace

CallContext::CallContext() : m_context(SpareContexts::shared().take()) {
    g_main_context_push_thread_default(m_context);
}

CallContext::~CallContext() {
    while (g_main_context_iteration(m_context, FALSE) != FALSE) {
    }
    g_main_context_pop_thread_default(m_context);
    SpareContexts::shared().putBack(m_context);
}

} // namespace velmo
