#pragma once

// Exports of Panelhost.dll. No exception leaves an exported function: each answers failure by its result.

#ifdef PANELHOST_BUILD
#define PANELHOST_API __declspec(dllexport)
#else
#define PANELHOST_API __declspec(dllimport)
#endif
