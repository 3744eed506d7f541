// Resource ids of the gallery, shared with its resource scripts. Each page has a dialog id from
// 200 on and a hundred control ids of its own.
#ifndef GALLERY_IDS_H
#define GALLERY_IDS_H

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

#define IDD_MAIN 100
#define IDC_NAVIGATION 1000
#define IDC_PANEL_TOP 1001
#define IDC_TITLE 1002
#define IDC_PAGE_PLACE 1003

// On any page: the caption of a group of controls, and a small remark.
#define IDC_GROUP_CAPTION 1010
#define IDC_REMARK 1011

// Page "push".
#define IDD_PAGE_PUSH 200
#define IDC_PUSH_NORMAL 2000
#define IDC_PUSH_MNEMONIC 2001
#define IDC_PUSH_DEFAULT 2002
#define IDC_PUSH_DISABLED 2003
#define IDC_PUSH_BLUE 2010
#define IDC_PUSH_BLUE_MNEMONIC 2011
#define IDC_PUSH_BLUE_MULTILINE 2012
#define IDC_PUSH_BLUE_DISABLED 2013
#define IDC_PUSH_LEFT 2020
#define IDC_PUSH_CENTRE 2021
#define IDC_PUSH_RIGHT 2022
#define IDC_PUSH_BLUE_LEFT 2023
#define IDC_PUSH_BLUE_RIGHT 2024
#define IDC_PUSH_MULTILINE 2030
#define IDC_PUSH_LONG 2031
#define IDC_PUSH_EMPTY 2032
#define IDC_PUSH_SMALL 2033

#endif
