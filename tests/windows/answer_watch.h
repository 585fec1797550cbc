// Asks windows for an answer again and again, from threads of its own: whether the program answers
// in time whatever else it does. Beside them a window that does nothing is asked in the same way:
// an answer that this one does not give in time either is the machine's fault.
#pragma once

#include <windows.h>

#include <atomic>

inline constexpr DWORD ANSWER_LIMIT = 250; // milliseconds that a window has for an answer

struct AnswerWatch {
    explicit AnswerWatch(HWND main_window);
    ~AnswerWatch();
    AnswerWatch(const AnswerWatch &) = delete;
    AnswerWatch &operator=(const AnswerWatch &) = delete;

    // Asked as well, and nobody before it is known: what opens it and makes its controls is not
    // what is watched. It may go at any time.
    std::atomic<HWND> dialog = nullptr;

    void stop(); // ends the threads; what follows is complete then

    struct Asked {
        int in_time = 0, late = 0; // answers
    };
    Asked main_asked, dialog_asked, idle_asked;
    SIZE_T most_memory = 0; // bytes that the process had in use at most while it was watched

    // Whether somebody else has taken the machine's time away meanwhile; once stopped.
    bool machine_was_busy() const;

    ULONGLONG idle_time, time; // of all processors, in units of the system

    const HWND main_window;
    std::atomic<HWND> idle_window = nullptr;
    std::atomic<bool> stopping = false;
    HANDLE threads[3];
};
