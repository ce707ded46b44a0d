/* A binary search tree in an array of nodes, its walks, and a heap as a queue by priority. */
#include <stdio.h>

#define NODES 64
#define NONE (-1)

struct node {
    int key, count;
    int left, right;
};

struct node nodes[NODES];
int used = 0;

int newNode(int key) {
    nodes[used].key = key;
    nodes[used].count = 1;
    nodes[used].left = nodes[used].right = NONE;
    return used++;
}

int add(int root, int key) {
    if (root == NONE)
        return newNode(key);
    if (key < nodes[root].key)
        nodes[root].left = add(nodes[root].left, key);
    else if (key > nodes[root].key)
        nodes[root].right = add(nodes[root].right, key);
    else
        nodes[root].count++;
    return root;
}

void inOrder(int root) {
    if (root == NONE)
        return;
    inOrder(nodes[root].left);
    printf("%d", nodes[root].key);
    if (nodes[root].count > 1)
        printf("x%d", nodes[root].count);
    printf(" ");
    inOrder(nodes[root].right);
}

void preOrder(int root) {
    if (root == NONE)
        return;
    printf("%d ", nodes[root].key);
    preOrder(nodes[root].left);
    preOrder(nodes[root].right);
}

int height(int root) {
    int left, right;
    if (root == NONE)
        return 0;
    left = height(nodes[root].left);
    right = height(nodes[root].right);
    return 1 + (left > right ? left : right);
}

int heap[NODES], heapSize = 0;

void push(int key) {
    int at = heapSize++;
    while (at > 0 && heap[(at - 1) / 2] > key) {
        heap[at] = heap[(at - 1) / 2];
        at = (at - 1) / 2;
    }
    heap[at] = key;
}

int pop(void) {
    int least = heap[0], last = heap[--heapSize], at = 0, child;
    while ((child = 2 * at + 1) < heapSize) {
        if (child + 1 < heapSize && heap[child + 1] < heap[child])
            child++;
        if (heap[child] >= last)
            break;
        heap[at] = heap[child];
        at = child;
    }
    heap[at] = last;
    return least;
}

int main(void) {
    int root = NONE, i, value = 17;
    for (i = 0; i < 30; i++) {
        value = (value * 29 + 11) % 97;
        root = add(root, value);
        push(value);
        if (i % 5 == 0)
            root = add(root, 50);
    }
    printf("in order: ");
    inOrder(root);
    printf("\nin front: ");
    preOrder(root);
    printf("\n%d nodes, %d levels\n", used, height(root));
    printf("by priority:");
    while (heapSize > 0)
        printf(" %d", pop());
    printf("\n");
    return height(root);
}
