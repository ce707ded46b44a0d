/* A list of people on the heap: insertion in order, search, reversal, removal. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct person {
    char *name;
    int age;
    struct person *next;
};

struct person *first = NULL;
int created = 0, released = 0;

struct person *makePerson(const char *name, int age) {
    struct person *new_person = (struct person *)malloc(sizeof(struct person));
    if (new_person == NULL) {
        fprintf(stderr, "no memory\n");
        exit(1);
    }
    new_person->name = (char *)malloc(strlen(name) + 1);
    strcpy(new_person->name, name);
    new_person->age = age;
    new_person->next = NULL;
    created++;
    return new_person;
}

void insert(const char *name, int age) {
    struct person *person = makePerson(name, age);
    struct person *at = first, *before = NULL;
    while (at != NULL && at->age < age) {
        before = at;
        at = at->next;
    }
    person->next = at;
    if (before == NULL)
        first = person;
    else
        before->next = person;
}

struct person *find(const char *name) {
    struct person *at;
    for (at = first; at != NULL; at = at->next)
        if (strcmp(at->name, name) == 0)
            return at;
    return NULL;
}

int drop(const char *name) {
    struct person *at = first, *before = NULL;
    while (at != NULL && strcmp(at->name, name) != 0) {
        before = at;
        at = at->next;
    }
    if (at == NULL)
        return 0;
    if (before == NULL)
        first = at->next;
    else
        before->next = at->next;
    free(at->name);
    free(at);
    released++;
    return 1;
}

void reverse(void) {
    struct person *done = NULL;
    while (first != NULL) {
        struct person *rest = first->next;
        first->next = done;
        done = first;
        first = rest;
    }
    first = done;
}

void print(const char *title) {
    struct person *at;
    int sum = 0, count = 0;
    printf("%s:", title);
    for (at = first; at != NULL; at = at->next) {
        printf(" %s(%d)", at->name, at->age);
        sum += at->age;
        count++;
    }
    if (count > 0)
        printf(", mean age %.2f", (double)sum / count);
    printf("\n");
}

int main(void) {
    struct person *found;
    insert("Ann", 31);
    insert("Bob", 25);
    insert("Cid", 64);
    insert("Dan", 8);
    insert("Eve", 42);
    print("by age");
    found = find("Cid");
    if (found != NULL)
        found->age++;
    printf("Cid is %s, Zoe is %s\n", find("Cid") ? "known" : "unknown",
           find("Zoe") ? "known" : "unknown");
    reverse();
    print("reversed");
    printf("%d %d\n", drop("Dan"), drop("Zoe"));
    print("without Dan");
    while (first != NULL) {
        struct person *rest = first->next;
        free(first->name);
        free(first);
        released++;
        first = rest;
    }
    printf("%d made, %d released\n", created, released);
    return created - released;
}
