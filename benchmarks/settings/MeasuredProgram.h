#pragma once

#include <string>

#include "benchmarks/settings/StatusItemHost.h"
#include "benchmarks/settings/WindowContents.h"
#include "benchmarks/support/ProcessFigures.h"
#include "platform/freedesktop/bus/BusConnection.h"
#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::benchmark {

/// A private desktop with a bar, on which programs are started and their window is opened.
class MeasuredProgram {
public:
    MeasuredProgram();

    /// Starts the program.
    /// @return microseconds until its status item is shown
    double start(const std::string& program);

    /// Opens its window.
    /// @return microseconds until there is something in it
    double open();

    void close() { contents_.close(); }

    ProcessFigures figures() const;

    /// Ends the program.
    void stop();

private:
    desktop::TestDesktop desktop_;
    std::string address_;
    StatusItemHost bar_;
    WindowContents contents_;
    BusConnection bus_;
    std::string instance_;  ///< The bus name of the program.
    desktop::ChildProcess process_;
};

}  // namespace lumatile::benchmark
