"""Uses the pages that the program writes in a real browser: Chromium without a window.

usage: host_browser_test.py PROGRAM SAMPLES AXE [UNITTEST ARGUMENT...]

AXE is the script of axe-core, which finds what people with a screen reader or a keyboard would stumble
on. Where there is no browser, or no axe-core, the tests that need it are skipped.
"""

import pathlib
import shutil
import sys
import tempfile
import unittest

from host import PROGRAM, SAMPLES, document, named, package, properties, run
from host_report_test import constant

try:
    from selenium import webdriver
    from selenium.common.exceptions import WebDriverException
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.action_chains import ActionChains
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys
    DRIVER = shutil.which("chromedriver") if shutil.which("chromium") else None
except ImportError:
    DRIVER = None

AXE = pathlib.Path(sys.argv[3]) if __name__ == "__main__" else None
OLD = [SAMPLES / name for name in ("platform.arxml", "gearbox.arxml")]
NEW = [SAMPLES / "platform.arxml", SAMPLES / "next" / "gearbox.arxml"]

HOSTILE = ["</script><script>window.hit=1</script>", '"><img src=x onerror=window.hit=1>',
           "' onmouseover='window.hit=1", "<!--", "]]>", "\u202e\u2066evil\u2069", "\u05e9\u05dc\u05d5\u05dd",
           "a\u0085b\u007fc", "${window.hit=1}", "x" * 4000, "&lt;b&gt;", "\U0001f600"]


def escaped(text):
    return "".join(f"&#{ord(c)};" for c in text)


def enumeration(name, count):
    """A type whose method has so many texts."""
    scales = "".join(
        f"<COMPU-SCALE><LOWER-LIMIT>{i}</LOWER-LIMIT><UPPER-LIMIT>{i}</UPPER-LIMIT><COMPU-CONST><VT>L{i}"
        "</VT></COMPU-CONST></COMPU-SCALE>" for i in range(count))
    return (named("COMPU-METHOD", "M", "<CATEGORY>TEXTTABLE</CATEGORY><COMPU-INTERNAL-TO-PHYS><COMPU-SCALES>"
                  f"{scales}</COMPU-SCALES></COMPU-INTERNAL-TO-PHYS>") +
            named("APPLICATION-PRIMITIVE-DATA-TYPE", name, "<CATEGORY>VALUE</CATEGORY>" +
                  properties("<COMPU-METHOD-REF>/P/M</COMPU-METHOD-REF>")))


def hostile_dictionary():
    """Names that would be markup, a map of a million values, numbers that are none, constants that
    don't fit, an enumeration of 100 000 literals."""
    size = 1000
    points = list(range(size))
    values = [f"{x * y % 977}" for x in range(size) for y in range(size)]
    values[5], values[6], values[-1] = "NaN", "INF", "-INF"
    return document(package("P", "\n".join((
        *(constant(escaped(name), "CURVE", [[1, escaped(name)]], [escaped(name), 2]) for name in HOSTILE),
        *(named("UNIT", f"U{i}", f"<DISPLAY-NAME>{escaped(name)}</DISPLAY-NAME>")
          for i, name in enumerate(HOSTILE)),
        constant("Million", "MAP", [points, points], values),
        constant("Flat", "MAP", [[1, 2], [3, 4]], ["NaN"] * 4),
        constant("Endless", "CURVE", [["-INF", 1, "INF"]], ["1e308", "-1e308", "INF"]),
        constant("Misfit", "CUBOID", [[1, 2], [3, 4], [5, 6]], [1, 2, 3]),
        enumeration("E", 100_000)))))


def page_arguments(name, folder):
    """What is asked of the program for a page."""
    if name == "hostile":
        # A name of a file is a text of a file too.
        path = folder / "<" / "script><script>window.hit=1<" / "script>\u202e\x07.arxml"
        path.parent.mkdir(parents=True)
        path.write_text(hostile_dictionary(), encoding="utf-8")
        return [path]
    if name == "slashes":
        for release, value in (("old", 1), ("new", 2)):
            (folder / f"{release}.arxml").write_text(document(package("P", "".join(
                constant(escaped(name), "CURVE", [[1, 2]], [value, 3]) for name in ("a/b", "b", "/", "a", *HOSTILE)))),
                encoding="utf-8")
        return ["--diff", folder / "old.arxml", folder / "new.arxml"]
    if name == "long":
        (folder / "long.arxml").write_text(document(package("P", enumeration("E", 50))), encoding="utf-8")
        return [folder / "long.arxml"]
    return {"samples": [*OLD, SAMPLES / "ignition.arxml"], "diff": ["--diff", "--old", *OLD, "--new", *NEW]}[name]


@unittest.skipUnless(DRIVER, "There is no chromium with its driver, or no selenium.")
class BrowserTest(unittest.TestCase):
    """A browser, and pages that are written when they are first opened."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.folder.cleanup)
        options = webdriver.ChromeOptions()
        for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                         "--window-size=1300,1000"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        try:
            cls.driver = webdriver.Chrome(service=Service(DRIVER), options=options)
        except WebDriverException as error:
            raise unittest.SkipTest(f"The browser doesn't start here: {error.msg}") from error
        cls.addClassCleanup(cls.driver.quit)

    def setUp(self):
        self.driver.get("about:blank")
        self.driver.get_log("browser")

    def tearDown(self):
        # The policy would report what it stops, a script what it raises.
        self.assertEqual(self.driver.get_log("browser"), [])

    def page(self, name):
        folder = pathlib.Path(self.folder.name)
        page = folder / f"{name}.html"
        if not page.exists():
            if name == "metamodel":
                page.write_bytes(run("describe", "--format", "html").stdout)
            else:
                result = run("report", "-o", page, *page_arguments(name, folder))
                self.assertTrue(page.exists(), result.stderr)
        return page

    def open(self, name, anchor="", scheme="light"):
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})
        self.driver.get(f"file://{self.page(name)}{anchor}")

    def find(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def script(self, text, *arguments):
        return self.driver.execute_script(text, *arguments)


class UseTest(BrowserTest):
    def hits(self):
        return self.script("return [...document.querySelectorAll('#hits a')].map(a => a.textContent)")

    def search(self, text):
        query = self.find("#query")
        query.clear()
        query.send_keys(text)
        return self.hits()

    def test_search_answers_by_name_class_and_unit_while_one_types(self):
        self.open("samples")
        self.assertIn("ClutchTorque", self.search("clutcht"))
        self.assertEqual(self.hits()[0], "ClutchTorque")
        self.assertIn(f"{len(self.hits())} found", self.find("#found").text)
        self.assertEqual(self.search("class:lookuptabletype ignition"),
                         ["IdleSpeed", "KnockRetard", "SparkAdvance"])
        units = set(self.search("unit:nm"))
        self.assertLessEqual({"ClutchTorque", "Torque", "NewtonMetre"}, units)
        self.assertEqual(set(self.search("unit:n")), units)
        self.assertEqual(self.search("nothing has this name"), [])
        self.assertFalse(self.find("#tree").is_displayed())
        self.find("#query").send_keys(Keys.ESCAPE)
        self.assertTrue(self.find("#tree").is_displayed())
        self.open("metamodel")
        self.assertEqual(self.search("minvalue"), ["minValue"] * 2)
        self.find("#hits a").click()
        self.assertEqual(self.find(":target").tag_name, "tr")

    def test_the_keyboard_alone_leads_from_the_search_to_an_object(self):
        self.open("samples")
        self.find("body").send_keys("/")
        active = self.driver.switch_to.active_element
        self.assertEqual(active.get_attribute("id"), "query")
        active.send_keys("sparkadvance", Keys.ARROW_DOWN)
        self.driver.switch_to.active_element.send_keys(Keys.ARROW_DOWN, Keys.ENTER)
        target = self.find(":target")
        self.assertEqual(target.find_element(By.CSS_SELECTOR, "h4 a").text, "SparkAdvance")
        self.open("samples", "#/Gearbox/ApplicationTypes/Gear")
        self.assertEqual(self.find(":target h4 a").text, "Gear")
        self.open("samples", "#100%")  # a link that leads nowhere does no harm
        self.assertIn("Gear", self.search("gear"))
        for path, name in (("/P/a/b", "a/b"), ("/P//", "/"), ("/P/a", "a")):
            self.open("slashes", f"#{path}")
            self.assertEqual(self.find(":target h4 a").text, name)
            self.assertEqual(self.script("return document.querySelectorAll(':target figure .changed').length"), 3)

    def test_links_lead_to_objects_and_back(self):
        self.open("samples", "#/Gearbox/ApplicationTypes/ClutchTorque")
        ActionChains(self.driver).move_to_element(self.find(":target")).perform()
        self.find(":target dd a").click()
        self.assertEqual(self.find(":target h4").text, "Torque CompuMethod")
        users = [link.text for link in self.find(":target .by").find_elements(By.TAG_NAME, "a")]
        self.assertIn("ClutchTorque", users)
        self.assertEqual(self.script(
            "return [...document.querySelectorAll('a')].filter(a => "
            "!document.getElementById(decodeURIComponent(a.hash.slice(1)))).length"), 0)

    def test_findings_are_kept_by_severity_and_rule(self):
        self.open("samples")
        self.script("document.querySelector('#filter').scrollIntoView()")
        kept = "return [...document.querySelectorAll('#list tbody tr')].filter(r => !r.hidden)" \
               ".map(r => [r.dataset.s, r.dataset.r])"
        everything = self.script(kept)
        self.find("#severity").send_keys("error")
        errors = self.script(kept)
        self.assertEqual(errors, [row for row in everything if row[0] == "error"])
        self.assertTrue(0 < len(errors) < len(everything))
        self.assertEqual(self.find("#kept").text, f"{len(errors)} of {len(everything)}")
        self.find("#rule").send_keys("zero-factor")
        self.assertEqual({row[1] for row in self.script(kept)}, {"zero-factor"})

    def test_what_the_pointer_is_at_is_marked_in_picture_and_numbers(self):
        self.open("samples", "#/Ignition/Constants/SparkAdvance")
        left, _, bottom = self.point_at(2, 2)  # 1000 1/min, 30 %
        self.assertEqual(self.find(":target .at").text, "EngineSpeed [1/min] 1000, Load [%] 30: 11.25")
        self.assertEqual(self.find(":target td.hot").text, "11.25")
        cell = self.find(":target .num tbody tr:last-child td")
        ActionChains(self.driver).move_to_element(cell).perform()
        self.assertEqual(self.find(":target td.hot").text, "8")
        self.assertIn(f"M{left:g} {bottom:g}v", self.find(":target path.hot").get_attribute("d"))
        # A cell of four pixels is found as well as one of sixty.
        self.open("hostile", "#/P/Million")
        for column, row in ((0, 0), (111, 0), (110, 111)):
            self.point_at(column, row)
            self.assertTrue(self.find(":target .at").text.startswith(f"Axis 1 {column * 9}, Axis 2 {row * 9}: "))
        self.open("diff", "#/Gearbox/Constants/Map")
        self.point_at(0, 0)
        self.assertEqual(len(self.driver.find_elements(By.CSS_SELECTOR, ":target path.hot")), 2)

    def point_at(self, column, row):
        """Moves the pointer to a cell of the map in sight; returns the map's left, right and lower edge."""
        picture = self.find(":target svg[data-kind=map]")
        left, right, columns = map(float, picture.get_attribute("data-x").split())
        top, bottom, rows = map(float, picture.get_attribute("data-y").split())
        self.script("arguments[0].scrollIntoView({block: 'center'})", picture)
        width, height = self.script("const b = arguments[0].getBoundingClientRect(); return [b.width, b.height]",
                                    picture)
        scale = width / float(picture.get_attribute("width"))
        ActionChains(self.driver).move_to_element_with_offset(
            picture, int((left + (column + 0.5) * (right - left) / columns) * scale - width / 2),
            int((bottom - (row + 0.5) * (bottom - top) / rows) * scale - height / 2)).perform()
        return left, right, bottom

    def test_both_themes_are_readable_and_one_can_choose(self):
        colour = "return ['backgroundColor', 'color'].map(c => getComputedStyle(document.body)[c]" \
                 ".match(/\\d+/g).slice(0, 3).reduce((a, b) => a + Number(b), 0))"
        for scheme, is_dark in (("light", False), ("dark", True)):
            for name in ("samples", "diff", "metamodel"):
                self.open(name, scheme=scheme)
                self.script("localStorage.clear()")
                self.open(name, scheme=scheme)
                paper, ink = self.script(colour)
                self.assertEqual(paper < ink, is_dark, (name, scheme))
                self.assertGreater(abs(paper - ink), 400)
                self.find("#theme").click()
                paper, ink = self.script(colour)
                self.assertEqual(paper < ink, not is_dark)
            # Paper is white whatever was chosen.
            self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
            paper, ink = self.script(colour)
            self.assertGreater(paper, ink)
            self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})
        self.script("localStorage.clear()")

    def test_hostile_texts_stay_texts_and_break_nothing(self):
        for page, others in (("hostile", {"U1"}), ("slashes", set())):
            with self.subTest(page):
                self.open(page)
                shown = self.script("return [...document.querySelectorAll('section[data-c] h4 a')]"
                                    ".map(a => a.textContent)")
                for name in ("</script><script>window.hit=1</script>", "<!--", "&lt;b&gt;", "x" * 4000,
                             "[U+202E][U+2066]evil[U+2069]", "a\ufffdb\u2421c"):
                    self.assertIn(name, shown)
                self.assertEqual(self.script("return [document.scripts.length, document.images.length]"), [1, 0])
                self.assertEqual(set(self.search("onerror")), {'"><img src=x onerror=window.hit=1>', *others})
                self.assertLessEqual(self.script("return document.documentElement.scrollWidth"), 1300)
                for link in self.script("return [...document.querySelectorAll('h4 a')].map(a => a.hash)"):
                    self.script("location.hash = arguments[0]", link)
                self.assertIsNone(self.script("return window.hit"))

    def test_large_and_odd_tables_are_drawn_with_what_is_left_out(self):
        self.open("hostile", "#/P/Million")
        text = self.find(":target").text
        self.assertIn("There are 1000 x 1000 values; each one here is the mean of 9 x 9", text)
        self.assertEqual(self.script("return document.querySelectorAll(':target td').length"),
                         112 * 112 + 1)
        self.assertEqual(self.script("return document.querySelectorAll(':target .num .bad').length"), 2)
        self.assertIn("[U+202E]\u2407.arxml", self.find("header p").text)
        for name, bad in (("Flat", 4), ("Endless", 1), ("Misfit", 5)):
            self.open("hostile", f"#/P/{name}")
            self.assertEqual(len(self.driver.find_elements(By.CSS_SELECTOR, ":target .num .bad")), bad)
            box = self.find(":target svg").rect
            self.assertTrue(box["width"] > 100 and box["height"] > 60)
        self.assertIn("The axes have 2 x 2 x 2 points, there are 3 values.", self.find(":target").text)
        self.open("hostile", "#/P/E")
        self.find(":target summary").click()
        self.assertEqual(self.script("return document.querySelectorAll(':target tbody tr').length"), 100_000)

    def test_pictures_have_room_for_their_labels(self):
        faults = """
            const box = each => each.getBoundingClientRect(), faults = [];
            for (const svg of document.querySelectorAll("svg.pic")) {
              const all = box(svg), told = what => faults.push([svg.getAttribute("aria-label"), what]);
              for (const text of svg.querySelectorAll("text")) {
                const b = box(text);
                if (b.left < all.left - 1 || b.right > all.right + 1 || b.top < all.top || b.bottom > all.bottom)
                  told(`cut: ${text.textContent}`);
              }
              for (const row of svg.querySelectorAll("g.mid")) [...row.children].slice(1).forEach(text => {
                if (box(text).left < box(text.previousSibling).right) told(`overlap: ${text.textContent}`);
              });
            }
            return [document.querySelectorAll("svg.pic").length, faults]"""
        for name in ("samples", "diff", "metamodel"):
            self.open(name)
            # On paper all is laid out.
            self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
            count, found = self.script(faults)
            self.assertGreater(count, 0)
            self.assertEqual(found, [], name)
            self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})

    def test_paper_has_all_objects_in_order(self):
        self.open("samples")
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "print"})
        hidden = self.script("return ['nav', '#theme'].map(s => "
                             "getComputedStyle(document.querySelector(s)).display)")
        self.assertEqual(hidden, ["none", "none"])
        tops = self.script("return [...document.querySelectorAll('section[data-c]')]"
                           ".map(s => s.getBoundingClientRect()).map(b => [b.top, b.height])")
        self.assertEqual([top for top, _ in tops], sorted(top for top, _ in tops))
        self.assertTrue(all(height > 20 for _, height in tops))
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": ""})

    def test_what_is_closed_is_printed_too(self):
        self.open("long")
        closed = "return document.querySelectorAll('main details:not([open])').length"
        before = self.script(closed)
        self.assertGreater(before, 0)
        self.script("addEventListener('beforeprint', () => "
                    "window.closed_on_paper = document.querySelectorAll('main details:not([open])').length)")
        self.assertTrue(self.driver.execute_cdp_cmd("Page.printToPDF", {})["data"])
        self.assertEqual(self.script("return window.closed_on_paper"), 0)
        self.assertEqual(self.script(closed), before)


class AccessibilityTest(BrowserTest):
    @unittest.skipUnless(AXE and AXE.exists(), "There is no axe-core: ./dev test fetches it in CI.")
    def test_axe_finds_no_violation(self):
        for name in ("samples", "diff", "metamodel"):
            for scheme in ("light", "dark"):
                with self.subTest(name, scheme=scheme):
                    self.open(name, scheme=scheme)
                    self.script(AXE.read_text(encoding="utf-8"))
                    self.driver.set_script_timeout(300)
                    violations = self.driver.execute_async_script(
                        "const done = arguments[arguments.length - 1];"
                        "axe.run(document, {resultTypes: ['violations']}).then(r => done(r.violations.map("
                        "v => [v.id, v.nodes.length, v.nodes.slice(0, 3).map(n => n.html)])))")
                    self.assertEqual(violations, [])


if __name__ == "__main__":
    result = unittest.main(argv=[sys.argv[0], *sys.argv[4:]], exit=False).result
    for _, reason in result.skipped[:1]:
        print(f"{PROGRAM}: skipped: {reason}")
    ran_none = len(result.skipped) >= result.testsRun
    sys.exit(77 if result.wasSuccessful() and ran_none else not result.wasSuccessful())
