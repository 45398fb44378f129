// What a host makes of a pairing: a call that waits, for a limited time, and an outcome to tell the user.
#pragma once

#include <chrono>
#include <string>

enum class Outcome
{
    Paired,
    Refused,  // the device was found, and is not paired
    NotFound, // nobody has the name
    NoAnswer, // the pairing still lasts; its report may come later, or never
    Busy,     // the one before still lasts, so this one was not begun
    Failed    // the platform refused to begin
};

Outcome PairDevice(std::string const& name, std::chrono::milliseconds patience);
