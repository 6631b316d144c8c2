/*
 * Basic types and calling conventions shared by every qviso32 header.
 *
 * On Windows the platform's own types come from <windows.h>.  The portable
 * engines are also compiled as 32-bit Linux code for sanitizer and fuzzing
 * runs; there the few platform types they mention are given the same sizes
 * as on Windows, so records keep one layout in both builds.
 */
#ifndef QVTYPES_H
#define QVTYPES_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

#ifdef _WIN32
#include <windows.h>
/* Every export uses the callee-cleans convention except the variadic ones. */
#define QVAPI WINAPI
#define QVCDECL __cdecl
#define QVCALLBACK CALLBACK
#else
typedef void *HMODULE;
typedef void *HINSTANCE;
typedef void *HWND;
typedef void *HANDLE;
typedef void *HGLOBAL;
typedef void *HDC;
typedef void *HBITMAP;
typedef void *HCURSOR;
typedef int BOOL;
typedef uint32_t DWORD;
typedef uint32_t UINT;
typedef uint16_t WORD;
typedef uint8_t BYTE;
typedef long LONG;
/* The DLL's calling conventions hold natively too on 32-bit x86, so a
   callback declared with the wrong one fails to compile in both builds. */
#if defined(__i386__) && (defined(__GNUC__) || defined(__clang__))
#define QVAPI __attribute__((stdcall))
#define QVCDECL __attribute__((cdecl))
#define QVCALLBACK __attribute__((stdcall))
#else
#define QVAPI
#define QVCDECL
#define QVCALLBACK
#endif
#endif

/* A result code: 0 is success, the named codes are listed in qvrv.h. */
typedef uint32_t RV;

#ifdef __cplusplus
#define QV_EXTERN_C_BEGIN extern "C" {
#define QV_EXTERN_C_END }
#else
#define QV_EXTERN_C_BEGIN
#define QV_EXTERN_C_END
#endif

#endif /* QVTYPES_H */
