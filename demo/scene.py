"""What stands on the demonstration's screen: something worth showing to a chat."""

from PIL import Image, ImageDraw, ImageFont, ImageOps

FONTS = "/usr/share/fonts/truetype/dejavu/"
CARD = (60, 90, 600, 560)
REGION = (84, 168, 576, 500)
FIGURES = (("Mon", 42), ("Tue", 58), ("Wed", 51), ("Thu", 97), ("Fri", 73), ("Sat", 20),
           ("Sun", 16))


def font(size, bold=False):
    return ImageFont.truetype(FONTS + ("DejaVuSans-Bold.ttf" if bold else "DejaVuSans.ttf"), size)


def draw(size):
    """A desktop of `size` pixels with a card on it; the chart inside REGION is the thing to show.
    Its gradients make neighbouring pixels differ, so that a picture cut one pixel off is seen."""
    picture = Image.merge("RGB", (
        Image.linear_gradient("L").resize(size).point(lambda v: 30 + v // 6),
        Image.linear_gradient("L").rotate(90).resize(size).point(lambda v: 60 + v // 4),
        Image.radial_gradient("L").resize(size).point(lambda v: 150 - v // 4)))
    canvas = ImageDraw.Draw(picture)
    canvas.rounded_rectangle(CARD, 14, fill="#fdfcf9")
    canvas.text((CARD[0] + 24, CARD[1] + 20), "Support requests this week", "#222", font(22, True))
    draw_chart(picture, canvas)
    canvas.text((CARD[0] + 24, CARD[3] - 44), "What happened on Thursday?", "#555", font(18))
    return picture


def draw_chart(picture, canvas):
    left, top, right, bottom = REGION
    floor = bottom - 44
    for value in range(0, 101, 25):
        y = floor - value * (floor - top - 20) // 100
        canvas.line((left + 44, y, right - 12, y), fill="#ddd")
        canvas.text((left + 36, y), str(value), "#777", font(13), anchor="rm")
    step = (right - left - 70) // len(FIGURES)
    for index, (day, value) in enumerate(FIGURES):
        x = left + 58 + index * step
        height = value * (floor - top - 20) // 100
        bar = Image.linear_gradient("L").resize((step - 18, height))
        shades = ("#e4572e", "#f3a712") if value > 90 else ("#3066be", "#6ba4e7")
        picture.paste(ImageOps.colorize(bar, shades[1], shades[0]), (x, floor - height))
        canvas.text((x + (step - 18) // 2, floor + 22), day, "#555", font(14), anchor="mm")
        canvas.text((x + (step - 18) // 2, floor - height - 10), str(value), "#333",
                    font(13, True), anchor="mm")
