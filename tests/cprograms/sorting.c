/* Six ways to sort the same numbers. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define COUNT 24

static int numbers[COUNT] = {34, 7, 23, 32, 5, 62, 32, 7, 23, 5, 90, -4, 0, 11, 78, 3, -40, 99, 1, 2, 64, 8, 27, 125};

void print(const char *title, int *values) {
    int i;
    printf("%-10s", title);
    for (i = 0; i < COUNT; i++)
        printf(" %d", values[i]);
    printf("\n");
}

void swap(int *a, int *b) {
    int kept = *a;
    *a = *b;
    *b = kept;
}

void bubbleSort(int *values, int count) {
    int i, j, swapped;
    for (i = 0; i < count - 1; i++) {
        swapped = 0;
        for (j = 0; j < count - 1 - i; j++) {
            if (values[j] > values[j + 1]) {
                swap(&values[j], &values[j + 1]);
                swapped = 1;
            }
        }
        if (!swapped)
            break;
    }
}

void insertionSort(int *values, int count) {
    int i, j;
    for (i = 1; i < count; i++) {
        int value = values[i];
        for (j = i - 1; j >= 0 && values[j] > value; j--)
            values[j + 1] = values[j];
        values[j + 1] = value;
    }
}

void shellSort(int *values, int count) {
    int gap, i, j;
    for (gap = count / 2; gap > 0; gap /= 2)
        for (i = gap; i < count; i++)
            for (j = i - gap; j >= 0 && values[j] > values[j + gap]; j -= gap)
                swap(values + j, values + j + gap);
}

void quickSort(int *values, int left, int right) {
    int i = left, j = right, pivot;
    if (left >= right)
        return;
    pivot = values[(left + right) / 2];
    while (i <= j) {
        while (values[i] < pivot)
            i++;
        while (values[j] > pivot)
            j--;
        if (i <= j)
            swap(&values[i++], &values[j--]);
    }
    quickSort(values, left, j);
    quickSort(values, i, right);
}

void mergeSort(int *values, int count, int *spare) {
    int half = count / 2, i = 0, j = half, k = 0;
    if (count < 2)
        return;
    mergeSort(values, half, spare);
    mergeSort(values + half, count - half, spare);
    while (i < half || j < count) {
        if (j == count || (i < half && values[i] <= values[j]))
            spare[k++] = values[i++];
        else
            spare[k++] = values[j++];
    }
    for (i = 0; i < count; i++)
        values[i] = spare[i];
}

int compare(const void *a, const void *b) {
    int x = *(int *)a, y = *(int *)b;
    return x < y ? 1 : x > y ? -1 : 0;
}

int main(void) {
    int work[COUNT], spare[COUNT];
    print("unsorted", numbers);
    memcpy(work, numbers, sizeof(numbers));
    bubbleSort(work, COUNT);
    print("bubble", work);
    memcpy(work, numbers, sizeof(numbers));
    insertionSort(work, COUNT);
    print("insertion", work);
    memcpy(work, numbers, sizeof(numbers));
    shellSort(work, COUNT);
    print("shell", work);
    memcpy(work, numbers, sizeof(numbers));
    quickSort(work, 0, COUNT - 1);
    print("quick", work);
    memcpy(work, numbers, sizeof(numbers));
    mergeSort(work, COUNT, spare);
    print("merge", work);
    memcpy(work, numbers, sizeof(numbers));
    qsort(work, COUNT, sizeof(int), compare);
    print("downwards", work);
    return 0;
}
