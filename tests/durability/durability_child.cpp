// Works on a company until it is killed: durability_child <dataDir> <company> <command> <side to start with>.
// Or changes its set of files once: durability_child set <change> <program folder>.
#include <QCoreApplication>
#include <cstdio>

#include "company/main_connection.h"
#include "durability/company_states.h"
#include "durability/set_changes.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"set") {
        std::puts("ready");
        std::fflush(stdout);
        durability::runSetChange(durability::SetChange(arguments.value(2).toInt()), arguments.value(3));
        return 0;
    }
    const durability::Command& command = durability::kCommands[arguments.value(3).toInt()];
    auto cn = company::openMainConnection(arguments.value(1), arguments.value(2));
    std::puts("ready");
    std::fflush(stdout);
    for (int side = arguments.value(4).toInt();; side = command.goesBack ? 1 - side : side)
        command.runTowards(*cn, side);
}
