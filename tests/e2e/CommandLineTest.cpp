// Both executables answer --help and --version without a display.
#include "support/SimProcess.h"

#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

using velmorak::test::buildDir;

TEST(CommandLine, HelpAndVersionPrintAndExit) {
    struct Case {
        const char* program;
        const char* option;
        QStringList words;
    };
    const Case cases[] = {
        {"velmorak",
         "--help",
         {"usage: velmorak", "Velmorak.conf", "StartUp", "COMn", "VELMORAK_STATE_FILE",
          "VELMORAK_SCRIPT", "velmorak-cardsim"}},
        {"velmorak", "--version", {"^velmorak \\d+\\.\\d+\\.\\d+\n$"}},
        {"velmorak-cardsim",
         "--help",
         {"--unplug-on FRAME[:N]", "--console", "--link PATH", "--laser old|new"}},
        {"velmorak-cardsim", "--version", {"^velmorak-cardsim \\d+\\.\\d+\\.\\d+\n$"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.program) + " " + c.option);
        QProcess p;
        // No display at all: the answer must come before any window system is needed.
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "xcb");
        env.remove("DISPLAY");
        env.remove("WAYLAND_DISPLAY");
        p.setProcessEnvironment(env);
        p.start(buildDir() + "/" + c.program, {c.option});
        ASSERT_TRUE(p.waitForFinished(10000));
        EXPECT_EQ(p.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(p.exitCode(), 0);
        const QString out = QString::fromLocal8Bit(p.readAllStandardOutput());
        // Version lines are matched whole; help text by its words.
        for (const QString& w : c.words)
            EXPECT_TRUE(w.startsWith('^') ? out.contains(QRegularExpression(w)) : out.contains(w))
                << w.toStdString() << " not in\n"
                << out.toStdString();
    }
}
