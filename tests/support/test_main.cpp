// Runs every test inside one QApplication, offscreen, with settings and runtime files in a
// temporary folder, so no test touches the user's own configuration.
#include "forms/ui/GuardedApplication.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv) {
    QTemporaryDir scratch;
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen")
                                                                    : qgetenv("QT_QPA_PLATFORM"));
    qputenv("XDG_RUNTIME_DIR", scratch.filePath("runtime").toUtf8());
    qputenv("XDG_CONFIG_HOME", scratch.filePath("config").toUtf8());
    QDir().mkpath(scratch.filePath("runtime"));
    QFile::setPermissions(scratch.filePath("runtime"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, scratch.filePath("config"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, scratch.filePath("config"));
    velmorak::GuardedApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
