#pragma once

// Ids of the dialogs that the tests run (Dialogs.rc); also read by the resource compiler.
#define IDD_PLAIN 200     // classic, without a font
#define IDD_EXTENDED 201  // extended, with a font, weight and character set
#define IDD_FLAT 202      // one of every control that becomes flat, and some that do not
#define IDD_DEFAULT 203   // an accent button and no default button

#define IDC_LABEL 1001
#define IDC_DESCRIBED 1002
#define IDC_EDIT 1003
#define IDC_PASSWORD 1004
#define IDC_RICH 1005
#define IDC_HSCROLL 1006
#define IDC_VSCROLL 1007
#define IDC_HSLIDER 1008
#define IDC_VSLIDER 1009
#define IDC_TRACKBAR 1010
#define IDC_LIST 1011
#define IDC_PUSH 1012
#define IDC_BLUE 1013
#define IDC_SETTINGS 1014
#define IDC_UNKNOWN 1015
#define IDC_SPLIT 1016
#define IDC_DROP 1017
#define IDC_RADIO 1018
#define IDC_CHECK 1019
#define IDC_TOGGLE 1020
#define IDC_COMBO_SIMPLE 1021
#define IDC_COMBO_EDIT 1022
#define IDC_COMBO_LIST 1023
#define IDC_THREE_STATE 1024
