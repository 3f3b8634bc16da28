"""News: navy and white decks, one red."""
import pictures
from design import (BODY, CAPTION, FIGURES, HEAD, LEAD, LEFT, LOWER, RIGHT, SMALL, THAI, TOP, WHITE,
                    News, Preset, faded, on_middle)


def lower_third():
    preset = Preset("News Lower Third", "lowerThird", "news", ["name", "reporter", "live"],
                    ["decked", "bold"], transition="presetReveal", duration=0.45)
    preset.box("Place Deck", LEFT, 748, 344, 48, News.red)
    preset.box("Name Deck", LEFT, 796, 1032, 84, News.paper)
    preset.box("Role Deck", LEFT, 880, 1032, LOWER - 880, News.navy)
    preset.text("Place", "LIVE · CHIANG MAI", LEFT + 24, on_middle(772, CAPTION), CAPTION, WHITE,
                weight=700, key="place")
    preset.text("Name", "Kanokwan Srisuk", LEFT + 24, on_middle(838, 54), 54, News.ink,
                weight=800, key="name")
    preset.text("Role", "North correspondent, Evening Report", LEFT + 24, on_middle(908, SMALL),
                SMALL, WHITE, weight=500, key="role")
    return preset


def headline():
    preset = Preset("News Headline", "lowerThird", "news", ["headline", "story"],
                    ["wide", "decked"], duration=0.35)
    preset.box("Headline Deck", LEFT, 768, RIGHT - LEFT, 104, News.paper)
    preset.box("Summary Deck", LEFT, 872, RIGHT - LEFT, 64, News.navy)
    preset.box("Edge", LEFT, 768, 16, 168, News.red)
    preset.text("Headline", "Harbour line opens two years early", LEFT + 48,
                on_middle(820, 60), 60, News.ink, weight=800, key="headline")
    preset.text("Summary", "First trains run on Monday, and the fare stays at 20 baht", LEFT + 48,
                on_middle(904, 34), 34, WHITE, weight=500, key="headline_summary")
    return preset


def breaking():
    preset = Preset("Breaking News Bar", "bar", "news", ["breaking", "urgent", "headline"],
                    ["full width", "bold"], duration=0.25)
    preset.box("Headline Bar", 0, 768, 1920, 104, News.red)
    preset.box("Detail Bar", 0, 872, 1920, 64, News.navy)
    preset.box("Tag", 0, 768, 480, 168, News.paper)
    preset.text("Tag Line 1", "BREAKING", LEFT, on_middle(818, 60), 60, News.red, weight=900,
                key="breaking_tag")
    preset.text("Tag Line 2", "NEWS", LEFT, on_middle(896, 42), 42, News.ink, weight=900,
                key="breaking_tag_2")
    preset.text("Headline", "Storm warning for all eastern provinces", 528, on_middle(820, HEAD),
                HEAD, WHITE, weight=800, key="breaking_headline")
    preset.text("Detail", "Ferries stay in harbour until Saturday morning, the coast guard says",
                528, on_middle(904, 34), 34, WHITE, weight=500, key="breaking_detail")
    return preset


def breaking_thai():
    preset = Preset("Breaking News Bar, Thai and English", "bar", "bilingual",
                    ["breaking", "urgent", "headline", "thai"], ["full width", "bold"],
                    language="th-en", duration=0.25)
    preset.box("Headline Bar", 0, 752, 1920, 120, News.red)
    preset.box("Detail Bar", 0, 872, 1920, 64, News.navy)
    preset.box("Tag", 0, 752, 480, 184, News.paper)
    preset.text("Tag Thai", "ข่าวด่วน", LEFT, 834, 68, News.red, weight=700, family=THAI,
                key="breaking_tag_th")
    preset.text("Tag English", "BREAKING NEWS", LEFT, on_middle(902, SMALL), SMALL, News.ink,
                weight=800, key="breaking_tag")
    preset.text("Headline Thai", "เตือนพายุเข้าชายฝั่งตะวันออกทุกจังหวัด", 528, 834, 60, WHITE,
                weight=700, family=THAI, key="breaking_headline_th")
    preset.text("Headline English", "Storm warning for all eastern provinces", 528,
                on_middle(904, 34), 34, WHITE, weight=500, key="breaking_headline")
    return preset


def ticker():
    preset = Preset("Headline Ticker Bar", "bar", "news", ["ticker", "headline", "clock"],
                    ["full width", "thin"], duration=0.3)
    preset.box("Bar", 0, 956, 1920, 68, News.navy)
    preset.box("Bar Edge", 0, 952, 1920, 4, News.red)
    preset.box("Tag", 0, 952, 304, 72, News.red)
    preset.box("Clock Plate", 1600, 956, 320, 68, News.steel)
    preset.text("Tag", "LATEST", LEFT, on_middle(989, BODY), BODY, WHITE, weight=800,
                key="ticker_tag")
    preset.text("Line", "Rice exports rise for the third month  •  New night market on Canal Road",
                344, on_middle(990, 34), 34, WHITE, weight=500, key="ticker_text")
    preset.text("Clock", "20:29:58", RIGHT, on_middle(990, 38, 0.714), 38, WHITE, weight=700,
                family=FIGURES, align="trailing", key="ticker_clock", kind="timer")
    return preset


def locator():
    preset = Preset("Live Location", "corner", "news", ["live", "place"], ["compact"],
                    transition="presetReveal", duration=0.4)
    preset.box("Live Plate", LEFT, TOP, 152, 64, News.red)
    preset.box("Place Plate", LEFT + 152, TOP, 424, 64, News.navy)
    preset.box("Live Dot", LEFT + 24, TOP + 24, 16, 16, WHITE, kind="ellipse")
    preset.text("Live", "LIVE", LEFT + 52, on_middle(TOP + 32, SMALL), SMALL, WHITE, weight=800,
                key="live_tag")
    preset.text("Place", "Chiang Mai, Thailand", LEFT + 176, on_middle(TOP + 32, SMALL), SMALL,
                WHITE, weight=600, key="live_place")
    return preset


def clock():
    preset = Preset("Clock Corner", "corner", "general", ["clock", "date"], ["compact"],
                    transition="dissolve", duration=0.5)
    preset.box("Plate", 1520, TOP, RIGHT - 1520, 128, News.navy, radius=8)
    preset.box("Rule", 1544, TOP + 80, 256, 2, faded(WHITE, 0.3), kind="line")
    preset.text("Clock", "20:29:58", 1672, on_middle(TOP + 42, 60, 0.714), 60, WHITE, weight=700,
                family=FIGURES, align="center", key="corner_clock", kind="timer")
    preset.text("Date", "Fri 20 November", 1672, on_middle(TOP + 105, CAPTION), CAPTION,
                News.mist, weight=500, align="center", key="corner_date")
    return preset


def bilingual():
    preset = Preset("Bilingual Lower Third", "lowerThird", "bilingual",
                    ["name", "thai", "english"], ["decked"], language="th-en",
                    transition="presetReveal", duration=0.48)
    preset.box("Thai Deck", LEFT, 688, 1000, 152, News.navy)
    preset.box("English Deck", LEFT, 840, 1000, 96, News.paper)
    preset.box("Edge", LEFT, 688, 12, 248, News.red)
    preset.text("Name Thai", "ดร. กมลวรรณ ศรีสุข", LEFT + 44, 755, 56, WHITE, weight=700,
                family=THAI, key="name_th")
    preset.text("Role Thai", "ผู้อำนวยการศูนย์เตือนภัยพิบัติ", LEFT + 44, 820, 34, News.mist,
                family=THAI, weight=400, key="role_th")
    preset.text("Name English", "Dr. Kamonwan Srisuk", LEFT + 44, 879, BODY, News.ink,
                weight=700, key="name")
    preset.text("Role English", "Director, Disaster Warning Centre", LEFT + 44, 920, CAPTION,
                News.ink, weight=500, key="role")
    return preset


def weather():
    sun, cloud, rain = (1.0, 0.76, 0.2, 1.0), (0.87, 0.91, 0.97, 1.0), (0.42, 0.70, 1.0, 1.0)
    preset = Preset("Weather Card", "card", "news", ["weather", "forecast"], ["panel"],
                    transition="dissolve", duration=0.5)
    left, right, top = 1264, RIGHT, 152
    preset.box("Panel", left, top, right - left, 776, News.navy, radius=16)
    preset.box("Rule", left + 40, top + 440, 480, 2, faded(WHITE, 0.25), kind="line")
    preset.text("Place", "Chiang Mai", left + 40, top + 80, HEAD, WHITE, weight=700,
                key="weather_place")
    preset.text("When", "Friday evening", left + 40, top + 134, SMALL, News.mist, weight=500,
                key="weather_when")
    preset.icon("Symbol", "weather_symbol", pictures.cloudy(sun, cloud), left + 40, top + 164, 208)
    preset.text("Temperature", "27°", right - 40, top + 316, 160, WHITE, weight=300,
                align="trailing", key="weather_temperature")
    preset.text("Condition", "Fair, some cloud", left + 40, top + 408, BODY, WHITE, weight=600,
                key="weather_condition")
    days = (("Sat", pictures.sunny(sun), "31°", "22°"),
            ("Sun", pictures.cloudy(sun, cloud), "30°", "23°"),
            ("Mon", pictures.rainy(cloud, rain), "27°", "22°"))
    for index, (day, symbol, high, low) in enumerate(days):
        middle, key = top + 500 + index * 104, f"weather_day_{index + 1}"
        baseline = on_middle(middle, LEAD)
        preset.text(f"Day {index + 1}", day, left + 40, baseline, LEAD, WHITE, weight=600, key=key)
        preset.icon(f"Day {index + 1} Symbol", f"{key}_symbol", symbol, left + 208, middle - 40, 80)
        preset.text(f"Day {index + 1} High", high, right - 136, baseline, LEAD, WHITE, weight=700,
                    align="trailing", key=f"{key}_high")
        preset.text(f"Day {index + 1} Low", low, right - 40, baseline, LEAD, News.mist, weight=400,
                    align="trailing", key=f"{key}_low")
    return preset


def next_up():
    preset = Preset("Coming Up Next", "card", "general", ["schedule", "next"], ["compact"],
                    transition="presetReveal", duration=0.45)
    left, right = 1192, RIGHT
    preset.box("Time Deck", left, 768, right - left, 56, News.red)
    preset.box("Title Deck", left, 824, right - left, 112, News.navy)
    preset.text("Label", "COMING UP NEXT", left + 24, on_middle(796, CAPTION), CAPTION, WHITE,
                weight=800, key="next_label")
    preset.text("Time", "21:00", right - 24, on_middle(796, SMALL, 0.714), SMALL, WHITE,
                weight=700, family=FIGURES, align="trailing", key="next_time")
    preset.text("Title", "The River at Night", left + 24, on_middle(880, 52), 52, WHITE,
                weight=700, key="next_title")
    return preset


def presets():
    return [lower_third(), headline(), breaking(), breaking_thai(), ticker(), locator(), clock(),
            bilingual(), weather(), next_up()]
