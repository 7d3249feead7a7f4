#pragma once

#include <chrono>
#include <string>

namespace qgtk {

/** The end of the time that something may take. */
class Deadline
{
public:
    explicit Deadline(int seconds) : m_end(Clock::now() + std::chrono::seconds(seconds)) {}

    /** The earlier of this one and one in so many seconds. */
    Deadline sooner(int seconds) const;

    bool hasPassed() const { return milliseconds() == 0; }

    /** What is left, 0 when it has passed. */
    int milliseconds() const;

    /** The same, rounded up to seconds. */
    int seconds() const;

private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point m_end;
};

/** A connected socket, closed when it goes. It does not block and is not handed to child processes. */
class Connection
{
public:
    /** Looks a host up and connects. Throws ServerUnreachable, ServerTimeout, each with host and port. */
    Connection(const std::string& host, const std::string& port, const Deadline& deadline);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    int get() const { return m_socket; }

    /** Leaves the socket to the caller. */
    int release();

private:
    int m_socket = -1;
};

} // namespace qgtk
