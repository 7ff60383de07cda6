// Fixed-width words the data model and its file formats are written in.
#pragma once
#include <cstdint>

using BOOL = int32_t;
#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif

using BYTE = uint8_t;
using WORD = uint16_t;
using DWORD = uint32_t;
using UINT = uint32_t;
using LONG = int32_t;
using ULONGLONG = uint64_t;
using LONGLONG = int64_t;
using REFERENCE_TIME = int64_t; // media time in 100-nanosecond units

constexpr DWORD INFINITE = 0xFFFFFFFF;
