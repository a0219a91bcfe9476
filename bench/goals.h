#pragma once
#include <benchmark/benchmark.h>

#include <map>
#include <string>

/// What the measurements have to reach. ARCHITECTURE.md names the same goals; a change here is a change
/// there.
namespace measured {

/// Shows what the library shows, and keeps each result for the table.
class Results : public benchmark::ConsoleReporter {
  public:
    using ConsoleReporter::ConsoleReporter;
    void ReportRuns(const std::vector<Run>& runs) override;

    /// The table of goals with what was measured beside. True when each is reached; one whose measurement did
    /// not run counts as missed when `all` ran, and is left out otherwise.
    bool tellGoals(bool all) const;
    /// True when a measurement ended in an error.
    bool failed() const { return failed_; }

  private:
    std::map<std::string, Run> runs_;
    bool failed_ = false;
};

}  // namespace measured
