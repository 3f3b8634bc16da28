// Long computations beside a running output.
#pragma once

#include <QEventLoop>
#include <QThreadPool>

#include <functional>

namespace tessara {

/// Runs `work` on another thread and the main loop meanwhile, so that no tick of an output waits
/// for it. `work` owns all that it touches.
template <typename Result>
Result inBackground(const std::function<Result()> &work)
{
    Result result{};
    QEventLoop loop;
    QThreadPool::globalInstance()->start([&] {
        result = work();
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    return result;
}

} // namespace tessara
