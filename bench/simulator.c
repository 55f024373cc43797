/* Stands for a simulator of a known length, whatever its arguments: BENCH_SIMULATOR is "compute"
   for a second of processor time, "wait" for one that doesn't end, a number for that many MiB of
   output, and nothing for one that ends at once. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

int main(void)
{
    static char text[1 << 20];
    const char* kind = getenv("BENCH_SIMULATOR");
    if (kind == NULL) {
        return 0;
    }
    if (strcmp(kind, "compute") == 0) {
        while (clock() < CLOCKS_PER_SEC) {
        }
    } else if (strcmp(kind, "wait") == 0) {
        pause();
    }
    memset(text, '\n', sizeof text);
    for (int left = atoi(kind); left > 0; --left) {
        fwrite(text, 1, sizeof text, stdout);
    }
    return 0;
}
