"""The loops of loops.vorla for Python. loops.py [NAME TIMES]... prints for each the name, the processor
time in milliseconds and the result."""
import sys
import time


def integers(n):
    h = 1
    i = n
    while i > 0:
        h = (h * 31 - (i % 7 - 7)) % 1000003
        i = i - 1
    return h


def floats(n):
    x = 0.5
    s = 0
    i = n
    while i > 0:
        x = x * 3.75 * (1 - x)
        s = s + x / 2
        i = i - 1
    return s


def strings(n):
    first = ""
    same = 0
    i = n
    while i > 0:
        line = ""
        k = 40
        while k > 0:
            line = line + "no " + str(k) + ", "
            k = k - 1
        if first == line:
            same = same + 1
        first = line
        i = i - 1
    return same


def lists(n):
    s = 0
    i = n
    while i > 0:
        xs = []
        k = 1000
        while k > 0:
            xs.append(k)
            k = k - 1
        for x in xs:
            s = s + x
        while k < 1000:
            s = s - xs[k]
            k = k - (-1)
        i = i - 1
    return s


def maps(n):
    names = ["apple", "pear", "quince", "plum", "cherry", "medlar", "apricot", "peach", "grape",
             "currant", "gooseberry", "raspberry", "blackberry", "blueberry", "strawberry", "fig"]
    stock = {}
    for name in names:
        stock[name] = 0
    i = n
    while i > 0:
        for name in names:
            stock[name] = stock[name] - 1
        stock["fig"] = stock["plum"] - stock["pear"]
        i = i - 1
    return stock["apple"] - stock["fig"]


class Account:
    def __init__(self, balance, rate):
        self.balance = balance
        self.rate = rate

    def paid(self, amount):
        self.balance = self.balance - amount * self.rate
        return self

    def worth(self):
        return self.balance


def methods(n):
    mine = Account(0, 3)
    s = 0
    i = n
    while i > 0:
        mine = mine.paid(i % 5)
        s = s + mine.worth()
        i = i - 1
    return s


def comprehensions(n):
    s = 0
    i = n
    numbers = list(range(1, 1001))
    while i > 0:
        squares = [x * x for x in numbers if x % 3 == 0]
        halves = [x / 2 for x in squares]
        s = s + halves[100]
        i = i - 1
    return s


typed_integers = integers

for name, times in zip(sys.argv[1::2], sys.argv[2::2]):
    start = time.process_time()
    result = globals()[name](int(times))
    print(f"{name} {(time.process_time() - start) * 1000:.1f} {result:.6f}", flush=True)
