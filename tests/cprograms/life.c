/* The game of life on a field that closes on itself. */
#include <stdio.h>
#include <string.h>

#define ROWS 16
#define COLUMNS 32
#define GENERATIONS 12

typedef char Field[ROWS][COLUMNS];

char field[ROWS][COLUMNS];
char next[ROWS][COLUMNS];

const char *start[] = {
    "..#.............................", "...#......................##....",
    ".###.....................#..#...", "..........................##....",
    "................................", "................................",
    ".......###......................", "................................",
    "...............##...............", "..............##................",
    "...............#................", "................................",
};

void set(void) {
    int row, column, rows = sizeof(start) / sizeof(start[0]);
    for (row = 0; row < ROWS; row++)
        for (column = 0; column < COLUMNS; column++)
            field[row][column] = row < rows && start[row][column] == '#';
}

int neighbours(int row, int column) {
    int count = 0, i, j;
    for (i = -1; i <= 1; i++)
        for (j = -1; j <= 1; j++)
            if (i || j)
                count += field[(row + i + ROWS) % ROWS][(column + j + COLUMNS) % COLUMNS];
    return count;
}

void step(void) {
    int row, column;
    for (row = 0; row < ROWS; row++) {
        for (column = 0; column < COLUMNS; column++) {
            int count = neighbours(row, column);
            next[row][column] = count == 3 || (count == 2 && field[row][column]);
        }
    }
    for (row = 0; row < ROWS; row++)
        for (column = 0; column < COLUMNS; column++)
            field[row][column] = next[row][column];
}

int print(int generation) {
    int row, column, alive = 0;
    printf("generation %d\n", generation);
    for (row = 0; row < ROWS; row++) {
        for (column = 0; column < COLUMNS; column++) {
            putchar(field[row][column] ? '#' : '.');
            alive += field[row][column];
        }
        putchar('\n');
    }
    printf("%d alive\n\n", alive);
    return alive;
}

int main(void) {
    int generation, alive = 0;
    set();
    for (generation = 0; generation <= GENERATIONS; generation++) {
        if (generation % 4 == 0)
            alive = print(generation);
        step();
    }
    return alive;
}
