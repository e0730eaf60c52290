#pragma once
// Basic types and result codes of the platform's interfaces.
#include <cstdint>

typedef uint8_t U8;
typedef int8_t S8;
typedef uint16_t U16;
typedef int16_t S16;
typedef uint32_t U32;
typedef int32_t S32;

// A player of the device; kSharedPlayerID is the folder all players share.
typedef S32 tPlayerID;
const tPlayerID kSharedPlayerID = -2;

// Result of platform calls; 0 is success.
typedef S32 tErrType;
const tErrType kNoErr = 0;
const tErrType kInvalidParamErr = -1;
const tErrType kNotFoundErr = -2;
const tErrType kRegistrationErr = -3;
const tErrType kDeviceErr = -4;
