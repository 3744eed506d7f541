/* Resource ids of the C host, shared with its resource script. */
#ifndef C_HOST_IDS_H
#define C_HOST_IDS_H

#define IDD_SAVE_CHANGES 100
#define IDC_QUESTION 1001

#endif
