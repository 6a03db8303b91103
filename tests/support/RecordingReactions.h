#pragma once

#include "link/LinkReactions.h"

#include <QStringList>

namespace velmorak::test {

// Records the window changes a failed exchange asks for.
class RecordingReactions : public LinkReactions {
  public:
    void unloadAll() override { calls << "unloadAll"; }
    void unloadOthers() override { calls << "unloadOthers"; }
    void lostCard(bool disableEditors) override {
        calls << (disableEditors ? "lostCard+editors" : "lostCard");
    }
    QStringList calls;
};

} // namespace velmorak::test
