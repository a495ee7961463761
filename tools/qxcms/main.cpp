#include "tools/qxcms/command.h"

int main(int argc, char** argv) {
    return qxcms::command::run(argc, argv);
}
