#include <cstdio>

#include "qxcms.h"

int main() {
    TCacheFile results("results.qxr", 1); // made where there is none yet
    if (results.GetStatus() != 0)
        return 3;
    results.AddTopic("Ink 50%", 1); // any name will do; -1 where it is there already
    results.ChangeIntItem("Ink 50%", "runs", 1, 0, 1000, 1);
    results.AddItem("Ink 50%", "Lab", "54.31 -36.98 -50.02", 1, 0);

    int runs = 0;
    double b = 0;
    if (results.Search("Ink 50%", "runs", &runs, 0, 1, 0) != 0 ||
        results.Search("Ink 50%", "Lab", &b, 2, 1, 0) != 0 || results.Save() != 0)
        return 5;
    std::printf("run %d: b* %.2f\n", runs, b);
}
