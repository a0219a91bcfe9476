#pragma once
#include <QString>
#include <chrono>
#include <memory>

#include "forms/global_record.h"
#include "forms/screens.h"

namespace help {
class HelpShelf;
}

namespace shell {

class frmMain;

/// The running program: the one global record, what screens get from the house, the help windows and the main
/// window.
class Program {
  public:
    /// `screens` outlives the program and is filled before Main(). `programDir` is the program's folder.
    Program(forms::ScreenRegistry& screens, const QString& programDir);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// How long the splash stays at least.
    void setSplashTime(std::chrono::milliseconds time) { splashTime_ = time; }
    /// Another place for the lock of the one running instance.
    void setLockPath(const QString& path) { lockPath_ = path; }

    /// The entry routine: refuses a second instance, shows the splash, shows the main window. False when
    /// another instance is running: the process is to end. The event loop is the caller's.
    bool Main();

    forms::House& house() { return house_; }
    help::HelpShelf& help() { return *help_; }
    frmMain* fMainForm() const { return fMainForm_.get(); }  ///< null before Main()

  private:
    forms::GlobalRecord global_;
    forms::House house_;
    std::chrono::milliseconds splashTime_{2000};
    QString lockPath_;
    std::unique_ptr<company::InstanceLock> instance_;
    std::unique_ptr<help::HelpShelf> help_;
    std::unique_ptr<frmMain> fMainForm_;
};

}  // namespace shell
