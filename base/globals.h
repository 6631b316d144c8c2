/*
 * Library-wide globals: set once by start-up and read throughout the library.
 */
#ifndef QV_BASE_GLOBALS_H
#define QV_BASE_GLOBALS_H

#include "qvtypes.h"

extern HMODULE LibraryModule;      /* this library's own module */
extern HMODULE ResourceModule;     /* the resource library holding every user-visible text */
extern char *AppNameText;          /* string 1: last-resort caption of error boxes */
extern char *FallbackMessageText;  /* string 10003: shown when a message cannot be */
extern char *ProfileFileName;      /* string 9: the library's private profile file */
extern char *ProductVersionText;   /* string 800, kept for the application; unused here */
extern char *CopyrightText;        /* string 801, kept for the application; unused here */
extern UINT HelpMessage;           /* the registered "WM_VEL_HELP" message */
extern int Initialised;            /* 1 after a successful start */
extern int32_t InstanceCount;      /* DrailufInstanceStart calls not yet stopped */

#endif /* QV_BASE_GLOBALS_H */
