// SPDX-License-Identifier: MIT
#include "Hand.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <map>
#include <stdexcept>
#include <thread>
#include <vector>

namespace vfTest {

namespace {

const std::map<std::string, xcb_keysym_t> names = {
    {"Ctrl", 0xffe3},   {"Shift", 0xffe1}, {"Alt", 0xffe9},  {"Return", 0xff0d}, {"Escape", 0xff1b},
    {"Tab", 0xff09},    {"Up", 0xff52},    {"Down", 0xff54}, {"Left", 0xff51},   {"Right", 0xff53},
    {"Delete", 0xffff}, {"Home", 0xff50},  {"End", 0xff57},  {"F11", 0xffc8},    {"Space", 0x20}};

/// Where a key symbol is on the keyboard.
struct Key
{
    xcb_keycode_t code = 0;
    bool isShifted = false;
};

} // namespace

struct HandPrivate
{
    xcb_connection_t* connection = nullptr;
    xcb_window_t root = 0;
    std::map<xcb_keysym_t, Key> keys;
};

Hand::Hand() : d(std::make_unique<HandPrivate>())
{
    d->connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(d->connection))
        throw std::runtime_error("no display");
    const xcb_setup_t* setup = xcb_get_setup(d->connection);
    d->root = xcb_setup_roots_iterator(setup).data->root;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    xcb_get_keyboard_mapping_reply_t* mapping = xcb_get_keyboard_mapping_reply(
        d->connection, xcb_get_keyboard_mapping(d->connection, setup->min_keycode, count), nullptr);
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(mapping);
    for (int code = 0; code < count; ++code) {
        for (int column = 1; column >= 0; --column) {
            const xcb_keysym_t symbol = symbols[code * mapping->keysyms_per_keycode + column];
            Key& key = d->keys[symbol];
            if (key.code == 0 || (key.isShifted && column == 0))
                key = {static_cast<xcb_keycode_t>(setup->min_keycode + code), column == 1};
        }
    }
    std::free(mapping);
}

Hand::~Hand()
{
    xcb_disconnect(d->connection);
}

void Hand::rest() const
{
    // Once the server answers it has passed on all that was sent before.
    std::free(xcb_get_input_focus_reply(d->connection, xcb_get_input_focus(d->connection), nullptr));
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

void Hand::send(std::uint8_t type, std::uint8_t detail)
{
    xcb_test_fake_input(d->connection, type, detail, XCB_CURRENT_TIME, d->root, 0, 0, 0);
    rest();
}

void Hand::moveTo(const QPoint& position)
{
    xcb_test_fake_input(d->connection, XCB_MOTION_NOTIFY, 0, XCB_CURRENT_TIME, d->root,
                        static_cast<std::int16_t>(position.x()), static_cast<std::int16_t>(position.y()), 0);
    rest();
}

void Hand::press(Button button)
{
    send(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button));
}

void Hand::release(Button button)
{
    send(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button));
}

void Hand::click(const QPoint& position, Button button)
{
    moveTo(position);
    press(button);
    release(button);
}

void Hand::doubleClick(const QPoint& position)
{
    click(position);
    click(position);
}

void Hand::drag(const QPoint& from, const QPoint& to, Button button)
{
    moveTo(from);
    press(button);
    constexpr int steps = 24;
    for (int i = 1; i <= steps; ++i)
        moveTo(from + (to - from) * i / steps);
    rest();
    release(button);
}

void Hand::type(const std::string& text)
{
    for (const char letter : text)
        key(std::string(1, letter));
}

void Hand::key(const std::string& combination)
{
    std::vector<xcb_keycode_t> held;
    std::string rest = combination;
    for (std::size_t plus = rest.find('+'); plus != std::string::npos && plus + 1 < rest.size() && plus > 0;
         plus = rest.find('+'))
    {
        held.push_back(d->keys.at(names.at(rest.substr(0, plus))).code);
        rest.erase(0, plus + 1);
    }
    xcb_keysym_t symbol = 0;
    if (rest.size() == 1) {
        // In a combination the letter names its key.
        symbol =
            static_cast<unsigned char>(held.empty() ? rest[0] : static_cast<char>(std::tolower(rest[0])));
    } else {
        symbol = names.at(rest);
    }
    const Key wanted = d->keys.at(symbol);
    if (wanted.isShifted)
        held.push_back(d->keys.at(names.at("Shift")).code);
    for (const xcb_keycode_t code : held)
        send(XCB_KEY_PRESS, code);
    send(XCB_KEY_PRESS, wanted.code);
    send(XCB_KEY_RELEASE, wanted.code);
    for (auto code = held.rbegin(); code != held.rend(); ++code)
        send(XCB_KEY_RELEASE, *code);
}

std::string Hand::property(std::uint32_t window, const char* name, const char* type) const
{
    const auto atom = [this](const std::string& text) {
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
            d->connection,
            xcb_intern_atom(d->connection, 0, static_cast<std::uint16_t>(text.size()), text.c_str()),
            nullptr);
        const xcb_atom_t value = reply->atom;
        std::free(reply);
        return value;
    };
    xcb_get_property_reply_t* reply = xcb_get_property_reply(
        d->connection, xcb_get_property(d->connection, 0, window, atom(name), atom(type), 0, 1024), nullptr);
    if (!reply)
        return std::string(); // the window went meanwhile
    std::string value(static_cast<const char*>(xcb_get_property_value(reply)),
                      static_cast<std::size_t>(xcb_get_property_value_length(reply)));
    std::free(reply);
    return value;
}

bool Hand::waitForWindow(const std::string& title)
{
    for (int i = 0; i < 3000; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        xcb_query_tree_reply_t* tree =
            xcb_query_tree_reply(d->connection, xcb_query_tree(d->connection, d->root), nullptr);
        const xcb_window_t* windows = xcb_query_tree_children(tree);
        bool isFound = false;
        for (int j = 0; j < xcb_query_tree_children_length(tree) && !isFound; ++j)
            isFound = property(windows[j], "_NET_WM_NAME", "UTF8_STRING") == title;
        std::free(tree);
        if (isFound)
            return true;
    }
    return false;
}

bool Hand::hasWindowManager() const
{
    // The root keeps what one that is gone has said; its window went with it.
    const std::string named = property(d->root, "_NET_SUPPORTING_WM_CHECK", "WINDOW");
    xcb_window_t window = 0;
    std::memcpy(&window, named.data(), std::min(named.size(), sizeof window));
    return window != 0 && property(window, "_NET_SUPPORTING_WM_CHECK", "WINDOW") == named;
}

std::vector<std::string> Hand::stackedWindows() const
{
    const std::string stacked = property(d->root, "_NET_CLIENT_LIST_STACKING", "WINDOW");
    std::vector<std::string> titles;
    for (std::size_t i = 0; i + sizeof(xcb_window_t) <= stacked.size(); i += sizeof(xcb_window_t)) {
        xcb_window_t window = 0;
        std::memcpy(&window, stacked.data() + i, sizeof window);
        titles.push_back(property(window, "_NET_WM_NAME", "UTF8_STRING"));
    }
    return titles;
}

} // namespace vfTest
