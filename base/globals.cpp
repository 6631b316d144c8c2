/*
 * Library-wide globals, set once by start-up and read throughout the library.
 */
#include "globals.h"

HMODULE LibraryModule;
HMODULE ResourceModule;
char *AppNameText;
char *FallbackMessageText;
char *ProfileFileName;
char *ProductVersionText;
char *CopyrightText;
UINT HelpMessage;
int Initialised;
int32_t InstanceCount;
