// Resource ids of the C++ host, shared with its resource script and named in Dialogs.xml.
#pragma once

#define IDD_SIGN_IN 120
#define IDC_HEADING 1001
#define IDC_NAME 1002
#define IDC_PASSWORD 1003
#define IDC_STAY 1004
