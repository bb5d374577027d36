// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vfTest {

struct HandPrivate;

/// A hand on mouse and keyboard: what it does goes to the display server, as from the devices themselves. Positions are
/// those of the screen, in its pixels. Not for the thread of the window: that has to answer meanwhile.
class Hand
{
public:
    enum Button
    {
        Left = 1,
        Middle = 2,
        Right = 3,
        WheelUp = 4,
        WheelDown = 5
    };

    Hand();
    ~Hand();

    void moveTo(const QPoint& position);
    void press(Button button);
    void release(Button button);
    void click(const QPoint& position, Button button = Left);
    void doubleClick(const QPoint& position);

    /// In small steps, as a hand does.
    void drag(const QPoint& from, const QPoint& to, Button button = Left);

    /// Types printable ASCII characters.
    void type(const std::string& text);

    /// Presses a key with modifiers, as "Ctrl+Shift+S", "Return", "F", "Escape", "Down".
    void key(const std::string& combination);

    /// @return whether a window of that title is shown before a minute is over
    bool waitForWindow(const std::string& title);

    /// @return whether a window manager runs on the display
    bool hasWindowManager() const;

    /// @return the titles of the programs' windows as the window manager stacks them, the one in front last
    std::vector<std::string> stackedWindows() const;

private:
    std::string property(std::uint32_t window, const char* name, const char* type) const;
    void send(std::uint8_t type, std::uint8_t detail);
    void rest() const;

    std::unique_ptr<HandPrivate> d;
};

} // namespace vfTest
