// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <new>
#include <stop_token>
#include <utility>

/// Computes something beside the window, one piece of work at a time and always the newest one asked for.
/// Work gets everything it needs by value: it runs on another thread and may outlive its job. What is asked
/// for while work runs replaces what waits, and tells the running work to stop; its result is dropped.
template <typename Result> class CLatestJob {
public:
    using Work = std::function<Result(std::stop_token)>;

    /// deliver: called on the window's thread with each result that is still wanted.
    explicit CLatestJob(std::function<void(Result)> deliver) : m_state(std::make_shared<State>())
    {
        m_state->deliver = std::move(deliver);
    }
    ~CLatestJob() { Cancel(); }
    CLatestJob(const CLatestJob&) = delete;
    CLatestJob& operator=(const CLatestJob&) = delete;

    void Start(Work work)
    {
        Cancel();
        m_state->waiting = std::move(work);
        if (!m_state->isRunning)
            Launch(m_state);
    }

    void Cancel()
    {
        m_state->waiting = nullptr;
        m_state->stop.request_stop();
    }

private:
    /// Belongs to the window's thread, but for the stop token.
    struct State {
        std::function<void(Result)> deliver;
        Work waiting;
        std::stop_source stop;
        bool isRunning = false;
    };

    static void Launch(const std::shared_ptr<State>& state)
    {
        state->isRunning = true;
        state->stop = {};
        QThreadPool::globalInstance()->start([work = std::exchange(state->waiting, nullptr),
                                              token = state->stop.get_token(),
                                              weak = std::weak_ptr<State>(state)] {
            std::shared_ptr<Result> result; // none when memory runs out
            try {
                result = std::make_shared<Result>(work(token));
            } catch (const std::bad_alloc&) {
                result = nullptr;
            }
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [weak, token, result] {
                    if (const std::shared_ptr<State> kept = weak.lock())
                        Finish(kept, token, result.get());
                },
                Qt::QueuedConnection);
        });
    }

    static void Finish(const std::shared_ptr<State>& state, const std::stop_token& token, Result* result)
    {
        state->isRunning = false;
        if (state->waiting)
            Launch(state);
        else if (result != nullptr && !token.stop_requested())
            state->deliver(std::move(*result));
    }

    std::shared_ptr<State> m_state;
};
