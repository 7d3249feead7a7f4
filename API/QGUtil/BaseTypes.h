#pragma once

/** Short type names of the foundation's interfaces. */
using BYTE = unsigned char;
using LPBYTE = BYTE*;
using BOOL = int;
using CHAR = char;
using INT = int;
using LONG = long;
