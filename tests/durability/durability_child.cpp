// Works on a company until it is killed: durability_child <dataDir> <company> <command> <side to start with>.
#include <QCoreApplication>
#include <cstdio>

#include "company/main_connection.h"
#include "durability/company_states.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const durability::Command& command = durability::kCommands[arguments.value(3).toInt()];
    auto cn = company::openMainConnection(arguments.value(1), arguments.value(2));
    std::puts("ready");
    std::fflush(stdout);
    for (int side = arguments.value(4).toInt();; side = command.goesBack ? 1 - side : side)
        command.runTowards(*cn, side);
}
