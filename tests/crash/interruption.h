// What the tests of interrupted units share: the faults, how a unit ended, and what may be found
// then.
#pragma once

#include <cstdint>
#include <functional>

#include "jet/disk/error.h"
#include "tests/crash/faulty_file_system.h"

namespace stelvan::test {

enum class Outcome { Done, Failed, Crashed };

inline constexpr Fault kEveryFault[] = {Fault::Stop,        Fault::StopTorn, Fault::NoSpace,
                                        Fault::FullForever, Fault::IoError,  Fault::BrokenForever};

/// A medium that broke for good leaves it open how a failed unit ends; nothing else does.
inline bool brokenForGood(Fault fault) {
    return fault == Fault::FullForever || fault == Fault::BrokenForever;
}

/// The faults after which the same program goes on.
inline constexpr Fault kEveryFailure[] = {Fault::NoSpace, Fault::FullForever, Fault::IoError,
                                          Fault::BrokenForever};

inline Outcome outcomeOf(const std::function<void()>& unit) {
    try {
        unit();
        return Outcome::Done;
    } catch (const jet::Error&) {
        return Outcome::Failed;
    } catch (const Crash&) {
        return Outcome::Crashed;
    }
}

/// May the state before, or the one after the unit, be found when it ended like this?
inline bool mayBeBefore(Outcome outcome) {
    return outcome != Outcome::Done;
}
inline bool mayBeAfter(Outcome outcome, Fault fault) {
    return outcome != Outcome::Failed || brokenForGood(fault);
}

}  // namespace stelvan::test
