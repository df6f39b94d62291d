"""Draws the growth of costs with the journal: entries on the x-axis, milliseconds on the y-axis, both logarithmic."""
import math
import os

WIDTH, HEIGHT = 760, 460
LEFT, RIGHT, TOP, BOTTOM = 80, 170, 30, 50
COLOURS = ["#1f5fa8", "#c2571a", "#2f7d3b", "#8a3aa0", "#a3262a", "#555555"]
STYLE = "font-family='sans-serif' font-size='13'"


def draw(path, costs, frame):
    """costs: {name: [(entries, milliseconds)]}; frame: milliseconds of the marked line."""
    points = [point for series in costs.values() for point in series]
    first, last = min(x for x, _ in points), max(x for x, _ in points)
    low = 10 ** math.floor(math.log10(min(y for _, y in points)))
    high = 10 ** math.ceil(math.log10(max(y for _, y in points)))

    def right(x):
        return LEFT + (WIDTH - LEFT - RIGHT) * math.log(x / first) / math.log(last / first)

    def down(y):
        return HEIGHT - BOTTOM - (HEIGHT - TOP - BOTTOM) * math.log(y / low) / math.log(high / low)

    parts = [f"<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 {WIDTH} {HEIGHT}' width='{WIDTH}' height='{HEIGHT}'>",
             "<title>Cost in milliseconds by number of entries</title>",
             f"<rect width='{WIDTH}' height='{HEIGHT}' fill='#ffffff'/>"]
    step = low
    while step <= high * 1.001:
        y = down(step)
        parts.append(f"<line x1='{LEFT}' x2='{WIDTH - RIGHT}' y1='{y:.1f}' y2='{y:.1f}' stroke='#dddddd'/>")
        parts.append(f"<text x='{LEFT - 8}' y='{y + 4:.1f}' text-anchor='end' {STYLE}>{step:g} ms</text>")
        step *= 10
    for x in sorted({x for x, _ in points}):
        parts.append(f"<text x='{right(x):.1f}' y='{HEIGHT - BOTTOM + 20}' text-anchor='middle' {STYLE}>{x:,}</text>")
    parts.append(f"<text x='{(LEFT + WIDTH - RIGHT) / 2}' y='{HEIGHT - 10}' text-anchor='middle' {STYLE}>entries</text>")
    y = down(frame)
    parts.append(f"<line x1='{LEFT}' x2='{WIDTH - RIGHT}' y1='{y:.1f}' y2='{y:.1f}' stroke='#888888' stroke-dasharray='5 4'/>")
    parts.append(f"<text x='{LEFT + 6}' y='{y - 5:.1f}' fill='#666666' {STYLE}>a frame, {frame:g} ms</text>")
    labels = spread({name: down(series[-1][1]) for name, series in costs.items()})
    for (name, series), colour in zip(costs.items(), COLOURS):
        line = " ".join(f"{right(x):.1f},{down(y):.1f}" for x, y in series)
        parts.append(f"<polyline points='{line}' fill='none' stroke='{colour}' stroke-width='2'/>")
        parts += [f"<circle cx='{right(x):.1f}' cy='{down(y):.1f}' r='3' fill='{colour}'/>" for x, y in series]
        parts.append(f"<text x='{WIDTH - RIGHT + 10}' y='{labels[name] + 4:.1f}' fill='{colour}' {STYLE}>"
                     f"{name}, {short(series[-1][1])} ms</text>")
    parts.append("</svg>")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(parts) + "\n")


def short(number):
    return f"{number:,.0f}" if number >= 100 else f"{number:.3g}"


def spread(places):
    """Moves labels down that would overlap others."""
    moved, free = {}, -math.inf
    for name, place in sorted(places.items(), key=lambda item: item[1]):
        moved[name] = max(place, free)
        free = moved[name] + 16
    return moved
