#pragma once

namespace velmorak {

// Window changes that a failed exchange asks for. The session implements them on the main
// window; tests record them.
class LinkReactions {
  public:
    virtual ~LinkReactions() = default;
    // Unload every window; unloading the main window ends the program.
    virtual void unloadAll() = 0;
    // Unload every window but the main window and the hidden connection window.
    virtual void unloadOthers() = 0;
    // Put the main window in the lost-card state. With disableEditors the display adjustment,
    // panel, transmitter and laser menus are disabled as well.
    virtual void lostCard(bool disableEditors) = 0;
};

} // namespace velmorak
