/* Counts lines, words and characters of its input, and how often each word and letter occurs. */
#include <stdio.h>
#include <string.h>
#include <ctype.h>

#define MAX_WORDS 200
#define MAX_LENGTH 30

struct entry {
    char word[MAX_LENGTH];
    int count;
};

struct entry table[MAX_WORDS];
int words = 0;
int letters[26];

void countWord(const char *word) {
    int i;
    for (i = 0; i < words; i++) {
        if (strcmp(table[i].word, word) == 0) {
            table[i].count++;
            return;
        }
    }
    if (words == MAX_WORDS)
        return;
    strcpy(table[words].word, word);
    table[words].count = 1;
    words++;
}

int comesBefore(struct entry *a, struct entry *b) {
    if (a->count != b->count)
        return a->count > b->count;
    return strcmp(a->word, b->word) < 0;
}

void sortTable(void) {
    int i, j;
    for (i = 1; i < words; i++) {
        struct entry kept = table[i];
        for (j = i - 1; j >= 0 && comesBefore(&kept, &table[j]); j--)
            table[j + 1] = table[j];
        table[j + 1] = kept;
    }
}

int main(void) {
    int c, lines = 0, characters = 0, total = 0, length = 0, longest = 0, i;
    char word[MAX_LENGTH], longestWord[MAX_LENGTH] = "";
    while ((c = getchar()) != EOF) {
        characters++;
        if (c == '\n')
            lines++;
        if (isalpha(c)) {
            c = tolower(c);
            letters[c - 'a']++;
            if (length < MAX_LENGTH - 1)
                word[length++] = c;
            continue;
        }
        if (length == 0)
            continue;
        word[length] = '\0';
        total++;
        countWord(word);
        if (length > longest) {
            longest = length;
            strcpy(longestWord, word);
        }
        length = 0;
    }
    sortTable();
    printf("%d lines, %d words, %d characters\n", lines, total, characters);
    printf("%d different words, the longest is \"%s\"\n", words, longestWord);
    for (i = 0; i < words && i < 12; i++)
        printf("%-12s%3d %.*s\n", table[i].word, table[i].count, table[i].count,
               "********************");
    for (i = 0; i < 26; i++)
        if (letters[i] > 0)
            printf("%c%d ", 'a' + i, letters[i]);
    printf("\n");
    return 0;
}
