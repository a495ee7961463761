#include <cstddef>

#include "platform/logical_names.h"

long fgeteof(FILE* file) {
    if (file == nullptr)
        return -1;
    const long position = ftell(file);
    if (position < 0 || fseek(file, 0, SEEK_END) != 0)
        return -1;
    const long end = ftell(file);
    return fseek(file, position, SEEK_SET) == 0 ? end : -1;
}

long fgetm(FILE* file, void* buffer, long size) {
    if (file == nullptr || buffer == nullptr || size <= 0)
        return 0;
    return static_cast<long>(fread(buffer, 1, static_cast<std::size_t>(size), file));
}

long fputm(FILE* file, const void* buffer, long size) {
    if (file == nullptr || buffer == nullptr || size <= 0)
        return 0;
    return static_cast<long>(fwrite(buffer, 1, static_cast<std::size_t>(size), file));
}
