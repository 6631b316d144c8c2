/* Resource numbers of the application's resource library (XQ1C30xx.DLL).
 *
 * The library loads every user-visible text, the wait-cursor frames and the
 * time gadgets' bitmaps from the resource library by number; this header names
 * those numbers for the library's code and for the reference resource script.
 * Plain C preprocessor only, so that windres, C and C++ can all include it.
 * A translated resource library keeps these numbers and the order and kind of
 * each message's printf arguments.
 */
#ifndef QV_RESOURCE_IDS_H
#define QV_RESOURCE_IDS_H

/* ---- Library start-up ------------------------------------------------- */
#define IDS_APP_NAME                 1     /* application name; last-resort caption */
#define IDS_PROFILE_FILE             9     /* private profile file name */
#define IDS_PRODUCT_VERSION          800   /* kept for the application */
#define IDS_COPYRIGHT                801   /* kept for the application */
#define IDS_FALLBACK_MESSAGE         10003 /* shown when a message cannot be formatted or shown */

/* ---- Wait cursor ------------------------------------------------------ */
#define IDC_WAITFRAME1               1     /* cursor frames, shown in turn */
#define IDC_WAITFRAME2               2
#define IDC_WAITFRAME3               3
#define IDC_WAITFRAME4               4
#define IDC_WAITFRAME5               5
#define IDC_WAITFRAME6               6
#define IDC_WAITFRAME7               7
#define IDC_WAITFRAME8               8
#define IDC_WAITFRAME_COUNT          8
#define IDS_WAIT_CANCEL_QUERY        5000  /* Yes/No after Escape; No abandons the operation */

/* ---- Status boxes ------------------------------------------------------ */
#define IDD_STATUS_BOX               4000  /* modeless progress box: text, bar, Cancel */
#define IDC_STATUS_TEXT              4001  /* the box's text */
#define IDC_STATUS_BAR               4002  /* owner-drawn bar, 0 to 100 percent */

/* ---- Error presentation: captions ------------------------------------- */
#define IDS_ERROR_CAPTION            13000 /* caption when the error carries none */
#define IDS_EXCHANGE_CAPTION         13060 /* caption of the data-exchange errors (codes 105..116) */

/* ---- Error presentation: messages (arguments in printf order) --------- */
#define IDS_ERR_BAD_INSTALL          10005 /* none */
#define IDS_ERR_EXECUTE_BASE         10010 /* + launch result; %s program. 10010 itself is the general text */
#define IDS_ERR_EXECUTE              (IDS_ERR_EXECUTE_BASE + 0)  /* %s */
#define IDS_ERR_EXECUTE_NOT_FOUND    (IDS_ERR_EXECUTE_BASE + 2)  /* %s */
#define IDS_ERR_EXECUTE_NO_PATH      (IDS_ERR_EXECUTE_BASE + 3)  /* %s */
#define IDS_ERR_EXECUTE_ACCESS       (IDS_ERR_EXECUTE_BASE + 5)  /* %s */
#define IDS_ERR_EXECUTE_MEMORY       (IDS_ERR_EXECUTE_BASE + 8)  /* %s */
#define IDS_ERR_EXECUTE_BAD_FORMAT   (IDS_ERR_EXECUTE_BASE + 11) /* %s */
#define IDS_ERR_EXECUTE_SHARE        (IDS_ERR_EXECUTE_BASE + 26) /* %s */
#define IDS_ERR_EXECUTE_ASSOC_INCOMPLETE (IDS_ERR_EXECUTE_BASE + 27) /* %s */
#define IDS_ERR_EXECUTE_DDE_TIMEOUT  (IDS_ERR_EXECUTE_BASE + 28) /* %s */
#define IDS_ERR_EXECUTE_DDE_FAIL     (IDS_ERR_EXECUTE_BASE + 29) /* %s */
#define IDS_ERR_EXECUTE_DDE_BUSY     (IDS_ERR_EXECUTE_BASE + 30) /* %s */
#define IDS_ERR_EXECUTE_NO_ASSOC     (IDS_ERR_EXECUTE_BASE + 31) /* %s */
#define IDS_ERR_FIELD_OVERFLOW       10103 /* none */
#define IDS_ERR_SHARING_VIOLATION    10104 /* %s file */
#define IDS_ERR_INTERNAL             11000 /* %s result-code name */
#define IDS_ERR_FAILURE              11001 /* %s result-code name */
#define IDS_ERR_OUT_OF_DISK          11002 /* %s file */
#define IDS_ERR_OUT_OF_LOCAL_MEMORY  11003 /* %lu bytes */
#define IDS_ERR_OUT_OF_GLOBAL_MEMORY 11004 /* %lu bytes */
#define IDS_ERR_SYSTEM_RESOURCES     11005 /* none */
#define IDS_ERR_FILE_CREATION        11006 /* %s file */
#define IDS_ERR_NO_FILE              11007 /* %s file */
#define IDS_ERR_FILE_EXISTS          11008 /* %s file */
#define IDS_ERR_TOO_MANY_OPEN_FILES  11009 /* %s file */
#define IDS_ERR_OS_ERROR             11010 /* %s system text, %s file (often empty) */
#define IDS_ERR_READ_FAILURE         11011 /* %s file (empty for a broken free list) */
#define IDS_ERR_WRITE_FAILURE        11012 /* %s file */
#define IDS_ERR_FORMATTED            11013 /* %s text formatted when the error was recorded */
#define IDS_ERR_WRITE_PROTECT        11014 /* %s file */
#define IDS_ERR_NETWORK_ACCESS_DENIED 11015 /* %s file */
#define IDS_ERR_LINK_SELF            11016 /* none */
#define IDS_ERR_LINK_ALREADY         11017 /* none */
#define IDS_ERR_REMOTE_DELETE        11018 /* none */
#define IDS_ERR_INVALID_FILE_NAME    11019 /* %s file */
#define IDS_ERR_NO_PRINTER           11020 /* none */
#define IDS_ERR_CLIPBOARD_OPEN       11021 /* none */
#define IDS_ERR_UNEXPECTED_COMM      11024 /* %s detail */
#define IDS_ERR_PRINTER              11025 /* none */
#define IDS_ERR_BAD_DIB              11026 /* none */
#define IDS_ERR_BAD_METAFILE         11027 /* none */
#define IDS_ERR_INTEGRITY            11028 /* %s file */
#define IDS_ERR_ACCESS_DENIED        11029 /* %s file */
#define IDS_ERR_ACCESS_VIOLATION     11031 /* %s right needed, %s right held (texts below) */
#define IDS_ACCESS_RIGHT_BASE        11032 /* + access level: words for IDS_ERR_ACCESS_VIOLATION */
#define IDS_ACCESS_RIGHT_NONE        (IDS_ACCESS_RIGHT_BASE + 0)
#define IDS_ACCESS_RIGHT_VIEW        (IDS_ACCESS_RIGHT_BASE + 1)
#define IDS_ACCESS_RIGHT_ADD         (IDS_ACCESS_RIGHT_BASE + 2)
#define IDS_ACCESS_RIGHT_CHANGE      (IDS_ACCESS_RIGHT_BASE + 3)
#define IDS_ACCESS_RIGHT_DELETE      (IDS_ACCESS_RIGHT_BASE + 4)
#define IDS_ACCESS_RIGHT_FULL        (IDS_ACCESS_RIGHT_BASE + 5)
#define IDS_ERR_TABLE_EXISTS         11038 /* %s table */
#define IDS_ERR_BAD_PATH             11040 /* %s file */
#define IDS_ERR_TABLE_DELETED        11041 /* none */
#define IDS_ERR_NOT_SCHEDULE_FILE    11043 /* %s file */
#define IDS_ERR_BAD_PASSWORD         11044 /* none */
#define IDS_ERR_NO_SCHEMA            11307 /* %s file */
#define IDS_ERR_WRONG_METAFILE_FORMAT 11309 /* none */
#define IDS_ERR_WRONG_BACKUP_PATH    11310 /* none */
#define IDS_ERR_NO_WEB_BROWSER       11311 /* none */
#define IDS_ERR_EXCHANGE_START       11410 /* code 105; %s detail */
#define IDS_ERR_EXCHANGE_NOT_OPEN    11411 /* code 111; %s */
#define IDS_ERR_EXCHANGE_FORMAT      11412 /* code 112; %s */
#define IDS_ERR_EXCHANGE_NEWER       11413 /* code 113; %s */
#define IDS_ERR_EXCHANGE_DAMAGED     11414 /* code 114; %s */
#define IDS_ERR_EXCHANGE_NOTHING     11415 /* code 115; %s */
#define IDS_ERR_EXCHANGE_SKIPPED     11416 /* code 116; %s */
#define IDS_ERR_EXCHANGE_WRITE       11417 /* code 110; %s */
#define IDS_ERR_EXCHANGE_MAPPING     11418 /* code 109; %s */
#define IDS_ERR_EXCHANGE_TOO_LARGE   11419 /* code 108; %s */
#define IDS_ERR_EXCHANGE_NO_REPLY    11420 /* code 107; %s */
#define IDS_ERR_EXCHANGE_REFUSED     11421 /* code 106; %s */
#define IDS_ERR_RECORD_LOCKED        15007 /* none */
#define IDS_ERR_OLD_FILE_CORRUPT     29904 /* %s file */

/* ---- Date and time: word tables (Sunday and January first) ------------ */
#define IDS_DAY_NAME_BASE            100   /* 100..106 full day names */
#define IDS_DAY_ABBREV_BASE          110   /* 110..116 three-letter abbreviations */
#define IDS_DAY_SHORT_BASE           120   /* 120..126 two-letter forms */
#define IDS_DAY_INITIAL_BASE         130   /* 130..136 one-letter forms */
#define IDS_MONTH_NAME_BASE          200   /* 200..211 full month names */
#define IDS_MONTH_ABBREV_BASE        220   /* 220..231 three-letter abbreviations */
#define IDS_MONTH_ALT_BASE           240   /* 240..251 further abbreviations accepted when reading */
#define IDS_ZODIAC_BASE              260   /* 260..271 sign names, Aries first */
#define IDS_WORD_NOW                 400
#define IDS_WORD_TODAY               401
#define IDS_WORD_TOMORROW            402
#define IDS_WORD_YESTERDAY           403
#define IDS_WORD_NOON                404
#define IDS_ORDINAL_BASE             2600  /* + day of month 1..31 */
#define IDS_HOUR_ABBREV              40650 /* picture letter z; tumbler hours */
#define IDS_MINUTE_ABBREV            40651 /* picture letter Z; tumbler minutes */
#define IDS_AM_DESIGNATOR            40652 /* default morning designator */
#define IDS_PM_DESIGNATOR            40653 /* default afternoon designator */
#define IDS_SHORT_DATE_DMY           50450 /* default pictures by date order */
#define IDS_LONG_DATE_DMY            50451
#define IDS_SHORT_DATE_MDY           50452
#define IDS_LONG_DATE_MDY            50453
#define IDS_SHORT_DATE_YMD           50454
#define IDS_LONG_DATE_YMD            50455

/* ---- Dialog value validators (two arguments each) --------------------- */
#define IDS_RANGE_UINT               20000 /* %lu low, %lu high */
#define IDS_RANGE_REAL               21000 /* %lu low, %lu high */
#define IDS_RANGE_DATE               22000 /* %s first date, %s last date */
#define IDS_RANGE_TIME               23000 /* %s first time, %s last time */

/* ---- Application launch ----------------------------------------------- */
#define IDS_LOCATE_TITLE             27330 /* title of the locate-program dialog */
#define IDS_LOCATE_FILTER            30110 /* file filter; its last character separates the parts */

/* ---- Gadgets ---------------------------------------------------------- */
#define IDS_COLOR_NAMES              30160 /* colour picker's names; its last character separates them */
#define IDB_HOUR_CELL                1     /* time bars: one hour of the ruler, teal transparent */
#define IDB_BUSY_PATTERN             3     /* TimeTracker: 8x8 pattern brush tile for busy time */
#define IDB_MARKER_TOP               4     /* TimeSetter: marker above the bar, teal transparent */
#define IDB_MARKER_BOTTOM            5     /* TimeSetter: marker below the bar, teal transparent */

/* ---- Pictures ---------------------------------------------------------- */
#define IDR_SAMPLE_METAFILE          6     /* RCDATA placeable metafile, 2 x 1 inches */

/* ---- Telephony (no arguments) ----------------------------------------- */
#define IDS_TEL_NO_DEVICE            1153  /* no dialing device chosen */
#define IDS_TEL_MODEM_ADDED          1155  /* after the modem control panel was started */
#define IDS_TEL_REINIT               1156  /* telephony must be restarted */
#define IDS_TEL_ADD_MODEM_QUERY      1157  /* Yes/No: install a modem now? */
#define IDS_TEL_DIALING_PROPERTIES   1158  /* OK/Cancel: location or calling card invalid */
#define IDS_TEL_NO_DRIVER            1159
#define IDS_TEL_SINGLE_USER          1160  /* device already used by another program */
#define IDS_TEL_NO_MEMORY            1161
#define IDS_TEL_FAILED               1162  /* any other telephony error */
#define IDS_TEL_RESOURCE_BUSY        1163  /* Retry/Cancel */
#define IDS_TEL_BAD_DEVICE           1165  /* usable-line check, reason 1 */
#define IDS_TEL_BAD_VERSION          1166  /* reason 2 */
#define IDS_TEL_NO_VOICE             1167  /* reason 4 */
#define IDS_TEL_NO_MAKECALL          1168  /* reason 5 */
#define IDS_TEL_CANNOT_OPEN          1169  /* reason 6 */
#define IDS_TEL_WAIT_BILLING         1170  /* OK/Cancel at "$" */
#define IDS_TEL_WAIT_DIALTONE        1171  /* OK/Cancel at "W" or "w" */
#define IDS_TEL_WAIT_QUIET           1172  /* OK/Cancel at "@" */
#define IDS_TEL_PROMPT               1173  /* OK/Cancel at "?" */
#define IDS_TEL_LINE_IN_USE          1175
#define IDS_TEL_OPEN_FAILED          1176
#define IDS_TEL_NO_PARTIAL_DIAL      1177

/* ---- qviso32.dll's own resources (resources/qviso32.rc) --------------- */
#define IDB_TAB                      2100  /* dialog tab strip: a tab, cyan transparent */
#define IDB_TAB_CURRENT              2101  /* the current tab, open towards the dialog */
#define IDB_CHECK_GLYPHS             32759 /* bitmap check boxes: 4 x 3 glyph cells */

#endif /* QV_RESOURCE_IDS_H */
