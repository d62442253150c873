// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// The signals that end the program: SIGTERM, SIGHUP and SIGINT.
///
/// The first one is only noted, so that the program can free its instances. A SIGTERM or SIGINT that comes
/// while one is noted ends the program at once, as the module may be blocked in a call. One that comes
/// within half a second of the first doesn't: the program "timeout", for example, signals a process and then
/// its whole group. Nor does a SIGHUP ever, because terminals send two. A signal that was ignored when the
/// program began (nohup) stays ignored. No signal is blocked: the module's threads and programs that it
/// starts would inherit that.
class CSignals
{
public:
    /// Installs the handlers; throws std::system_error. They stay until the program ends.
    CSignals();

    /// The noted signal, 0 when there is none.
    [[nodiscard]] int pending() const;

    /// Forgets a noted SIGINT; false when another signal or none is noted.
    bool takeInterrupt();

    /// Waits until @p iFile can be read or has ended; false when a signal is noted.
    [[nodiscard]] bool waitReadable(int iFile) const;

    /// Waits @p dSeconds; returns early when a signal is noted.
    void sleep(double dSeconds) const;
};
