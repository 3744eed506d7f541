/* Resource ids of the C host, shared with its resource script. */
#ifndef C_HOST_IDS_H
#define C_HOST_IDS_H

#ifndef IDC_STATIC
#define IDC_STATIC (-1)
#endif

#define IDD_SAVE_CHANGES 100

#endif
