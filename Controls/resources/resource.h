#pragma once

#define IDC_DRAG 102
#define IDB_FILTERS 102
#define IDB_DELAY_ON 105
#define IDB_DELAY_OFF 106
