#include "CHeader.c"  // NOLINT(bugprone-suspicious-include): the same, as C++
