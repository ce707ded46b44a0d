/* Records with texts and nested records: sorted by several keys, searched, summed. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define NAME_LENGTH 16
#define COUNT 7

struct date {
    int year, month, day;
};

typedef struct item {
    char name[NAME_LENGTH];
    int stock[3];
    double price;
    struct date bought;
} Item;

Item items[COUNT];
int used = 0;

void add(const char *name, double price, int year, int month, int day) {
    Item *item = &items[used];
    int i;
    strncpy(item->name, name, NAME_LENGTH - 1);
    item->name[NAME_LENGTH - 1] = '\0';
    item->price = price;
    item->bought.year = year;
    item->bought.month = month;
    item->bought.day = day;
    for (i = 0; i < 3; i++)
        item->stock[i] = (used * 7 + i * 3) % 10;
    used++;
}

int byName(const void *a, const void *b) {
    return strcmp(((Item *)a)->name, ((Item *)b)->name);
}

int byPrice(const void *a, const void *b) {
    double x = ((Item *)a)->price, y = ((Item *)b)->price;
    return x < y ? -1 : x > y;
}

long dayNumber(struct date *date) { return date->year * 372L + date->month * 31 + date->day; }

int byDate(const void *a, const void *b) {
    long x = dayNumber(&((Item *)a)->bought), y = dayNumber(&((Item *)b)->bought);
    return x < y ? -1 : x > y;
}

int total(const Item *item) {
    int i, sum = 0;
    for (i = 0; i < 3; i++)
        sum += item->stock[i];
    return sum;
}

void print(const char *title) {
    int i;
    printf("%s\n", title);
    for (i = 0; i < used; i++)
        printf("  %-15s %8.2f %3d %04d-%02d-%02d\n", items[i].name, items[i].price,
               total(&items[i]), items[i].bought.year, items[i].bought.month, items[i].bought.day);
}

Item *find(const char *name) {
    int i;
    for (i = 0; i < used; i++)
        if (strcmp(items[i].name, name) == 0)
            return &items[i];
    return NULL;
}

int main(void) {
    double worth = 0;
    Item *found, copy;
    int i;
    add("screws", 0.05, 2021, 3, 14);
    add("hammer", 12.5, 2019, 12, 1);
    add("a saw with a long name", 18.75, 2020, 2, 29);
    add("nails", 0.02, 2021, 3, 2);
    add("anvil", 340, 1999, 7, 31);
    add("pliers", 12.5, 2022, 1, 1);
    print("as added");
    qsort(items, used, sizeof(Item), byName);
    print("by name");
    qsort(items, used, sizeof(Item), byDate);
    print("by date");
    for (i = 0; i < used; i++)
        worth += items[i].price * total(&items[i]);
    printf("worth %.2f\n", worth);
    found = find("anvil");
    copy = *found;
    copy.stock[0] += 100;
    strcpy(copy.name, "copy");
    printf("%s %d, %s %d, %d\n", found->name, total(found), copy.name, total(&copy),
           find("glue") == NULL);
    printf("%d\n", byPrice(&items[0], &copy));
    return 0;
}
