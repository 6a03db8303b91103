// Builds the seed resolution database from its readable source:
// velmorak-seedgen <resolutions.txt> <DBDefaults.MDB>
#include "resdb/SeedData.h"

#include <QCoreApplication>

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: velmorak-seedgen <seed source> <database file>\n");
        return 2;
    }
    try {
        velmorak::BuildSeedDatabase(velmorak::ReadSeedSource(args.at(1)), args.at(2));
    } catch (const std::exception& e) {
        std::fprintf(stderr, "velmorak-seedgen: %s\n", e.what());
        return 1;
    }
    return 0;
}
