#include "DllHost.c"
