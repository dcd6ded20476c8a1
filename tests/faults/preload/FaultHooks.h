#pragma once

/// The functions that the preload library exports; a test finds them by their names, so that it links nothing of it.

/// Which call is not to be carried out as it should.
struct FaultOrder {
    enum Kind : int { fileCall, allocation };
    Kind kind = fileCall;
    long number = 0;            ///< counted from 1 since the arming; 0 lets all go on, which counts them
    int error = 0;              ///< errno of the failing call; 0 has it transfer half of what was asked for
    bool onlyTransfers = false; ///< reads and writes alone are counted
    bool stays = false;         ///< all that follow fail too
};

/// What happened while it was armed.
struct FaultCount {
    long seen = 0;   ///< calls of that kind
    long failed = 0; ///< of which so many were not carried out as they should
    char call[32]{}; ///< the first of them
};

/// Arms for file calls on paths below the folder (absolute, links resolved), from all threads, or for allocations of
/// the calling thread.
using FaultsArm = void(const char* folder, const FaultOrder* order);
using FaultsDisarm = void(FaultCount* count);
constexpr const char* kFaultsArm = "tessaro_faults_arm";
constexpr const char* kFaultsDisarm = "tessaro_faults_disarm";
