#pragma once

#include <csignal>
#include <ctime>

namespace qgtk {

/**
 * Keeps SIGPIPE from the process while a server is talked to, on this thread alone and without a handler: a
 * signal that the time within brings about is taken away again, one that waited before stays.
 */
class PipeSignal
{
public:
    PipeSignal()
    {
        sigemptyset(&m_pipe);
        sigaddset(&m_pipe, SIGPIPE);
        m_waitedBefore = isWaiting();
        pthread_sigmask(SIG_BLOCK, &m_pipe, &m_before);
    }
    ~PipeSignal()
    {
        const timespec atOnce = {};
        if (!m_waitedBefore && isWaiting())
            sigtimedwait(&m_pipe, nullptr, &atOnce);
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    PipeSignal(const PipeSignal&) = delete;
    PipeSignal& operator=(const PipeSignal&) = delete;

private:
    static bool isWaiting()
    {
        sigset_t waiting;
        return sigpending(&waiting) == 0 && sigismember(&waiting, SIGPIPE) == 1;
    }

    sigset_t m_pipe = {};
    sigset_t m_before = {};
    bool m_waitedBefore = false;
};

} // namespace qgtk
