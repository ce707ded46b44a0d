/* Matrices of doubles: product, determinant, inverse, a system of equations, iteration. */
#include <stdio.h>
#include <math.h>

#define N 3

void print(const char *title, double m[N][N]) {
    int i, j;
    printf("%s\n", title);
    for (i = 0; i < N; i++) {
        for (j = 0; j < N; j++)
            printf("%9.4f", fabs(m[i][j]) < 1e-9 ? 0.0 : m[i][j]);
        printf("\n");
    }
}

void multiply(double a[N][N], double b[N][N], double product[N][N]) {
    int i, j, k;
    for (i = 0; i < N; i++) {
        for (j = 0; j < N; j++) {
            double sum = 0;
            for (k = 0; k < N; k++)
                sum += a[i][k] * b[k][j];
            product[i][j] = sum;
        }
    }
}

double determinant(double m[N][N]) {
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

int invert(double m[N][N], double inverted[N][N]) {
    double work[N][2 * N];
    int i, j, k;
    for (i = 0; i < N; i++)
        for (j = 0; j < 2 * N; j++)
            work[i][j] = j < N ? m[i][j] : j - N == i ? 1.0 : 0.0;
    for (i = 0; i < N; i++) {
        int pivot = i;
        double scale;
        for (k = i + 1; k < N; k++)
            if (fabs(work[k][i]) > fabs(work[pivot][i]))
                pivot = k;
        if (work[pivot][i] == 0)
            return 0;
        for (j = 0; j < 2 * N; j++) {
            double kept = work[i][j];
            work[i][j] = work[pivot][j];
            work[pivot][j] = kept;
        }
        scale = work[i][i];
        for (j = 0; j < 2 * N; j++)
            work[i][j] /= scale;
        for (k = 0; k < N; k++) {
            double factor = work[k][i];
            if (k == i)
                continue;
            for (j = 0; j < 2 * N; j++)
                work[k][j] -= factor * work[i][j];
        }
    }
    for (i = 0; i < N; i++)
        for (j = 0; j < N; j++)
            inverted[i][j] = work[i][j + N];
    return 1;
}

double squareRoot(double x) {
    double guess = x / 2, better;
    int steps = 0;
    do {
        better = (guess + x / guess) / 2;
        if (fabs(better - guess) < 1e-12)
            break;
        guess = better;
    } while (++steps < 50);
    return better;
}

int main(void) {
    double a[N][N] = {{2, -1, 0}, {-1, 2, -1}, {0, -1, 2}};
    double b[N][N] = {{1, 2, 3}, {4, 5, 6}, {7, 8, 10}};
    double c[N][N], d[N][N];
    double singular[N][N] = {{1, 2, 3}, {2, 4, 6}, {1, 1, 1}};
    int i;
    multiply(a, b, c);
    print("a * b", c);
    printf("%.4f %.4f %.4f\n", determinant(a), determinant(b), determinant(c));
    if (invert(b, c)) {
        print("inverse of b", c);
        multiply(b, c, d);
        print("b * inverse", d);
    }
    printf("singular: %d\n", invert(singular, c));
    for (i = 2; i <= 10; i += 2)
        printf("%.10f %.10f\n", squareRoot(i), sqrt(i));
    printf("%.6e %g %g\n", exp(10.0), pow(2.0, 0.5), atan2(1.0, -1.0));
    return 0;
}
