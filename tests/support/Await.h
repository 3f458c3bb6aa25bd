#pragma once

#include <QEventLoop>
#include <qcoro/qcorotask.h>

#include <optional>

// Runs the event loop until `task` has finished and gives its result.
template <typename T>
T awaitResult(QCoro::Task<T> &&task)
{
    std::optional<T> result;
    QEventLoop loop;
    auto waiter = [&]() -> QCoro::Task<> {
        result.emplace(co_await std::move(task));
        loop.quit();
    };
    auto running = waiter();
    if (!result) {
        loop.exec();
    }
    return std::move(*result);
}
