/* The C header before anything else, and everything that it declares used once. */
#include <QkDlg/QkDlg.h>

extern const QkCreateControlProc create;
extern const QkDeleteControlProc destroy;
extern const QkFlatStyleEnabledProc enabled;
extern const QkGetUIColorProc colour;

const QkCreateControlProc create = CreateQkCustomControl;
const QkDeleteControlProc destroy = DeleteQkCustomControl;
const QkFlatStyleEnabledProc enabled = FlatStyleEnabled;
const QkGetUIColorProc colour = GetUIColor;

/* What callers from other languages are told. */
typedef char BoolIsOneByte[sizeof(bool) == 1 ? 1 : -1];
typedef char TypesEndAtPassword[QK_PASSWORD == 12 ? 1 : -1];
typedef char ColoursEndAtLine[QK_COLOR_LINE == 11 ? 1 : -1];
