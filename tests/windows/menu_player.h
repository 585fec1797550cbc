// Plays the user of a pop-up menu: each time the open menu waits for input the next step is taken,
// and after the last one the menu is closed.
#pragma once

#include <windows.h>

#include <functional>
#include <set>
#include <vector>

struct MenuPlayer {
    HMENU menu = nullptr;         // the one shown, null = none has been shown yet
    std::vector<int> commands;    // ids that the main window was sent
    std::vector<UINT> highlights; // entry highlighted at each step, by position; UINT_MAX = none
    std::set<ULONG_PTR> drawn;    // item data of the entries drawn

    // Watches the main window until the end of its life; meanwhile the scene is not painted.
    explicit MenuPlayer(std::vector<std::function<void()>> wanted_steps = {});
    ~MenuPlayer();
    MenuPlayer(const MenuPlayer &) = delete;
    MenuPlayer &operator=(const MenuPlayer &) = delete;

    // Shows a menu and handles what comes of it.
    void show(int menu_type, int node_id = -1);
    // The same of something that opens a menu; commands reach the window when they are passed on.
    void play(const std::function<void()> &open);
    bool passes_on = false;

    // A step that goes down to the entry of a command and presses Return there.
    std::function<void()> choose(UINT id);

    std::vector<std::function<void()>> steps;
    std::size_t next_step = 0;
    WNDPROC previous;
};

// Posts a key as the keyboard does.
void press_key(UINT key);

std::function<void()> key(UINT code);  // a step that presses a key
std::function<void()> letter(char id); // a step that types a character

// State flags (MFS_…) of an entry.
UINT entry_state(HMENU menu, UINT position);
