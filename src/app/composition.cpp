#include "app/composition.h"

#include "base/qt_main_queue.h"

namespace velmo {

Composition::Composition() = default;
Composition::~Composition() = default;

MainQueue &Composition::mainQueue() {
    if (!m_mainQueue)
        m_mainQueue = std::make_unique<QtMainQueue>();
    return *m_mainQueue;
}

} // namespace velmo
