/* Counts lines, words and characters of its input, and how often each word and letter occurs. */
#include <stdio.h>
#include <string.h>
#include <ctype.h>

#define MAX_WORDS 200
#define MAX_LENGTH 30

char table[MAX_WORDS][MAX_LENGTH];
int counts[MAX_WORDS], order[MAX_WORDS];
int words = 0;
int letters[26];

void countWord(const char *word) {
    int i;
    for (i = 0; i < words; i++) {
        if (strcmp(table[i], word) == 0) {
            counts[i]++;
            return;
        }
    }
    if (words == MAX_WORDS)
        return;
    strcpy(table[words], word);
    counts[words] = 1;
    words++;
}

int comesBefore(int a, int b) {
    if (counts[a] != counts[b])
        return counts[a] > counts[b];
    return strcmp(table[a], table[b]) < 0;
}

void sortTable(void) {
    int i, j;
    for (i = 0; i < words; i++) {
        for (j = i - 1; j >= 0 && comesBefore(i, order[j]); j--)
            order[j + 1] = order[j];
        order[j + 1] = i;
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
        printf("%-12s%3d %.*s\n", table[order[i]], counts[order[i]], counts[order[i]],
               "********************");
    for (i = 0; i < 26; i++)
        if (letters[i] > 0)
            printf("%c%d ", 'a' + i, letters[i]);
    printf("\n");
    return 0;
}
