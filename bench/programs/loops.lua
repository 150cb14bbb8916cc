-- The loops of loops.vorla for Lua. lua loops.lua [NAME TIMES]... prints for each the name, the
-- processor time in milliseconds and the result.
local loops = {}

function loops.integers(n)
    local h = 1
    local i = n
    while i > 0 do
        h = (h * 31 - (i % 7 - 7)) % 1000003
        i = i - 1
    end
    return h
end

function loops.floats(n)
    local x = 0.5
    local s = 0
    local i = n
    while i > 0 do
        x = x * 3.75 * (1 - x)
        s = s + x / 2
        i = i - 1
    end
    return s
end

function loops.strings(n)
    local first = ""
    local same = 0
    local i = n
    while i > 0 do
        local line = ""
        local k = 40
        while k > 0 do
            line = line .. "no " .. k .. ", "
            k = k - 1
        end
        if first == line then
            same = same + 1
        end
        first = line
        i = i - 1
    end
    return same
end

function loops.lists(n)
    local s = 0
    local i = n
    while i > 0 do
        local xs = {}
        local k = 1000
        while k > 0 do
            xs[#xs + 1] = k
            k = k - 1
        end
        for _, x in ipairs(xs) do
            s = s + x
        end
        while k < 1000 do
            s = s - xs[k + 1]
            k = k - (-1)
        end
        i = i - 1
    end
    return s
end

function loops.maps(n)
    local names = {"apple", "pear", "quince", "plum", "cherry", "medlar", "apricot", "peach", "grape",
        "currant", "gooseberry", "raspberry", "blackberry", "blueberry", "strawberry", "fig"}
    local stock = {}
    for _, name in ipairs(names) do
        stock[name] = 0
    end
    local i = n
    while i > 0 do
        for _, name in ipairs(names) do
            stock[name] = stock[name] - 1
        end
        stock.fig = stock.plum - stock.pear
        i = i - 1
    end
    return stock.apple - stock.fig
end

local Account = {}
Account.__index = Account

function Account.paid(self, amount)
    self.balance = self.balance - amount * self.rate
    return self
end

function Account.worth(self)
    return self.balance
end

function loops.methods(n)
    local mine = setmetatable({balance = 0, rate = 3}, Account)
    local s = 0
    local i = n
    while i > 0 do
        mine = mine:paid(i % 5)
        s = s + mine:worth()
        i = i - 1
    end
    return s
end

function loops.comprehensions(n)
    local s = 0
    local i = n
    local numbers = {}
    for x = 1, 1000 do
        numbers[x] = x
    end
    while i > 0 do
        local squares = {}
        for _, x in ipairs(numbers) do
            if x % 3 == 0 then
                squares[#squares + 1] = x * x
            end
        end
        local halves = {}
        for _, x in ipairs(squares) do
            halves[#halves + 1] = x / 2
        end
        s = s + halves[101]
        i = i - 1
    end
    return s
end

loops.typed_integers = loops.integers

for at = 1, #arg, 2 do
    local start = os.clock()
    local result = loops[arg[at]](math.tointeger(arg[at + 1]))
    print(string.format("%s %.1f %.6f", arg[at], (os.clock() - start) * 1000, result))
end
