// Writes a made-up station directory in the servers' XML form.
//   radio_directory_gen STATIONS FILE
#include <cstdio>
#include <cstdlib>

#include "bench/StationDirectoryWriter.h"

int main(int argc, char** argv) {
    if (argc != 3 || atoi(argv[1]) <= 0) {
        fprintf(stderr, "usage: radio_directory_gen STATIONS FILE\n");
        return 2;
    }
    StationDirectoryWriter writer;
    if (!writer.WriteFile(argv[2], atoi(argv[1]))) {
        fprintf(stderr, "radio_directory_gen: cannot write %s\n", argv[2]);
        return 1;
    }
    return 0;
}
