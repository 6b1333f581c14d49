/* A host in C: shows a panel, sets a knob, and prints what the device behind it holds.
 * Host PANEL [DEVICES KNOB ADDRESS VALUE]: closed by hand, or, with a knob, at once when it was set. */
#include "Panelhost/ControlProtocol.h"
#include "Panelhost/HostInterface.h"

#include <stdio.h>
#include <stdlib.h>

static HOSTINFO* root;

static LRESULT CALLBACK PanelProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER) {
        ph_Tick(root);
    } else if (message == WM_DESTROY) {
        ph_DestroyRoot(root);
        PostQuitMessage(0);
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

int main(int count, char** arguments) {
    WNDCLASSA panelClass = {0};
    HWND window;
    MSG message;
    panelClass.lpfnWndProc = PanelProc;
    panelClass.lpszClassName = "HostPanel";
    RegisterClassA(&panelClass);
    window = CreateWindowA("HostPanel", "Host", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 50, 50, 900, 600, NULL, NULL, NULL, NULL);
    root = ph_CreateRoot(window, "Host");
    if (count < 2 || !LoadLibraryA("OSMIRControlLib.dll") || (count > 2 && ph_LoadDevices(root, arguments[2]) < 0) ||
        ph_LoadPanel(root, arguments[1]) < 0) {
        return 2;
    }
    if (count > 5) {
        char held[64] = "nothing";
        float value = (float)atof(arguments[5]);
        PH_VALUERECORD record = {PH_SET, 0, PH_FLOAT, 0, NULL, "value", 0};
        record.data = &value;
        SendMessageA(ph_Find(root, arguments[3]), PH_MESSAGE, 0, (LPARAM)&record);
        ph_GetParameter(root, arguments[4], held, sizeof held);
        return printf("%s is %s\n", arguments[4], held) < 0;
    }
    ShowWindow(window, SW_SHOW);
    SetTimer(window, 1, 20, NULL);
    while (GetMessageA(&message, NULL, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 0;
}
