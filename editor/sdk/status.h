#pragma once

/// Statuses of database calls and results of editor calls, as whole numbers: 0 is success for the database,
/// RTNORM for the editor.
namespace Acad {
enum ErrorStatus : int {
    eOk = 0,
    eNotApplicable = 2,
    eInvalidInput = 3,
    eOutOfRange = 5,
    eInvalidIndex = 9,
    eInvalidKey = 10,
    eKeyNotFound = 11,
    eDuplicateKey = 12,
    eDuplicateRecordName = 13,
    eBadDwgHeader = 20,
    eUnsupportedFileFormat = 21,
    eFileNotFound = 22,
    eFileAccessErr = 23,
    eFilerError = 24,
    eFileSharingViolation = 25,
    eNoDatabase = 30,
    eNullObjectId = 31,
    eWasErased = 32,
    eWasOpenForRead = 33,
    eWasOpenForWrite = 34,
    eNotOpenForWrite = 35,
    eCannotBeErasedByCaller = 36,
    eObjectIsReferenced = 37,
    eSelfReference = 38,
    eNoDocument = 40,
    eLockViolation = 41,
    eNotImplementedYet = 50,
};
} // namespace Acad

using Acad::eOk;

constexpr int RTNONE = 5000;
constexpr int RTREAL = 5001;
constexpr int RTPOINT = 5002;
constexpr int RTSHORT = 5003;
constexpr int RTSTR = 5005;
constexpr int RTENAME = 5006;
constexpr int RT3DPOINT = 5009;
constexpr int RTLONG = 5010;
constexpr int RTVOID = 5014;
constexpr int RTLB = 5016;
constexpr int RTLE = 5017;
constexpr int RTNIL = 5019;
constexpr int RTNORM = 5100;
constexpr int RTERROR = -5001;
constexpr int RTCAN = -5002;
constexpr int RTREJ = -5003;
constexpr int RTFAIL = -5004;
constexpr int RTKWORD = -5005;
