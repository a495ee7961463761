// Both the kernel's reports and the program's reach the substitute.
#include <platform/utility.h>
#include <spectral/tmeasgeom.h>

int main() {
    TMeasGeom::GetGeometryNumber("nowhere");
    error_mess_fl("a report of the program", "report", 1);
}
