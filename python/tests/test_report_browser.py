"""The page of a report in a browser: no message, no request, links, filters and folding, widths, light and dark, axe."""

from __future__ import annotations

import base64
import json
import os
import pathlib
import re
import shutil
import subprocess
from typing import Any, Dict, Iterator, List

import made_cases
import pytest

pytest.importorskip("jinja2")
pytest.importorskip("matplotlib")
pytest.importorskip("selenium")

from selenium import webdriver  # noqa: E402
from selenium.webdriver.chrome.service import Service  # noqa: E402
from selenium.webdriver.common.by import By  # noqa: E402
from selenium.webdriver.common.keys import Keys  # noqa: E402

from nereofile.report import report  # noqa: E402

CHROMIUM, DRIVER = shutil.which("chromium"), shutil.which("chromedriver")
if not CHROMIUM or not DRIVER:
    pytest.skip("Debian's chromium and chromium-driver aren't there", allow_module_level=True)

HERE = pathlib.Path(__file__).parent
PAGES = ["whole", "hostile", "damaged", "empty", "two"]
WIDTHS = [360, 1024, 1920]
A4 = (210 / 25.4 * 72, 297 / 25.4 * 72)  # in points
UNFOLD = "for (const one of document.querySelectorAll('details')) one.open = true;"


@pytest.fixture(scope="module")
def pages(tmp_path_factory: pytest.TempPathFactory) -> Dict[str, pathlib.Path]:
    """A page of each case."""
    folder = tmp_path_factory.mktemp("pages")
    whole = made_cases.whole_case(folder / "whole")
    hostile = made_cases.hostile_case(folder / "hostile")
    html = {
        "whole": report(whole),
        "hostile": report(hostile),
        "damaged": report(made_cases.damaged_case(folder / "damaged")),
        "empty": report(made_cases.empty_case(folder / "empty")),
        "two": report(whole, compare=hostile),
    }
    for name, text in html.items():
        (folder / f"{name}.html").write_text(text, encoding="utf-8")
    return {name: folder / f"{name}.html" for name in html}


@pytest.fixture(scope="module")
def browser() -> Iterator[Any]:
    """Chromium without a window."""
    options: Any = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage"):
        options.add_argument(argument)
    options.binary_location = CHROMIUM
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    driver: Any = webdriver.Chrome(service=Service(str(DRIVER)), options=options)
    yield driver
    driver.quit()


@pytest.fixture(scope="module")
def axe(tmp_path_factory: pytest.TempPathFactory) -> str:
    """The script of axe-core."""
    npm = shutil.which("npm")
    if not npm:
        pytest.skip("npm isn't there, which axe-core comes from")
    folder = pathlib.Path(os.environ.get("NEREO_BUILD_FOLDER") or tmp_path_factory.mktemp("axe")) / "python" / "browser"
    script = folder / "node_modules" / "axe-core" / "axe.min.js"
    folder.mkdir(parents=True, exist_ok=True)
    for name in ("package.json", "package-lock.json"):
        shutil.copy(HERE / "browser" / name, folder)
    if not script.exists():
        done = subprocess.run(
            [npm, "ci", "--ignore-scripts", "--no-audit", "--no-fund"],
            cwd=folder, capture_output=True, text=True, check=False,
        )
        if done.returncode != 0:
            pytest.skip("npm can't install axe-core: " + done.stderr[-300:])
    return script.read_text(encoding="utf-8")


def show(browser: Any, page: pathlib.Path, width: int = 1280, scheme: str = "light") -> None:
    """Opens a page in a window of the width, in light or dark."""
    wishes = {"prefers-color-scheme": scheme, "prefers-reduced-motion": "reduce"}
    features = [{"name": name, "value": value} for name, value in wishes.items()]
    browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": "", "features": features})
    size = {"width": width, "height": 800, "deviceScaleFactor": 1, "mobile": False}
    browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", size)
    browser.get("about:blank")
    browser.get(page.as_uri())


def find(browser: Any, selector: str) -> Any:
    return browser.find_element(By.CSS_SELECTOR, selector)


def find_all(browser: Any, selector: str) -> List[Any]:
    found: List[Any] = browser.find_elements(By.CSS_SELECTOR, selector)
    return found


def is_shown(browser: Any, element: Any) -> bool:
    """Whether an element isn't hidden, and not in anything that is folded."""
    return bool(browser.execute_script("return arguments[0].checkVisibility()", element))


def shown_rows(browser: Any, list_id: str) -> int:
    rows: int = browser.execute_script(
        "return [...document.querySelectorAll(arguments[0])].filter((row) => row.checkVisibility()).length",
        f"#{list_id} tbody tr",
    )
    return rows


@pytest.mark.parametrize("name", PAGES)
def test_no_message_and_no_request(browser: Any, pages: Dict[str, pathlib.Path], name: str) -> None:
    show(browser, pages[name])
    browser.get_log("browser"), browser.get_log("performance")
    browser.get(pages[name].as_uri())
    browser.execute_script(UNFOLD)
    assert browser.get_log("browser") == []
    events = [json.loads(entry["message"])["message"] for entry in browser.get_log("performance")]
    asked = {event["params"]["request"]["url"] for event in events if event["method"] == "Network.requestWillBeSent"}
    assert {url for url in asked if url != "data:,"} == {pages[name].as_uri()}


@pytest.mark.parametrize("name", PAGES)
def test_each_link_leads_to_something_that_is_shown(browser: Any, pages: Dict[str, pathlib.Path], name: str) -> None:
    show(browser, pages[name])
    wrong = browser.execute_async_script("""
        const done = arguments[0];
        const later = () => new Promise((resolve) => setTimeout(resolve, 0));
        (async () => {
          const wrong = [];
          for (const link of document.querySelectorAll("a[href]")) {
            for (const one of document.querySelectorAll("details.material, details.long")) one.open = false;
            history.replaceState(null, "", "#");
            link.click();
            await later();
            const target = document.getElementById(link.getAttribute("href").slice(1));
            if (!target || !target.checkVisibility()) wrong.push(link.getAttribute("href"));
          }
          done(wrong);
        })();""")
    assert wrong == []


@pytest.mark.parametrize("name", PAGES)
@pytest.mark.parametrize("width", WIDTHS)
def test_nothing_is_wider_than_the_window(browser: Any, pages: Dict[str, pathlib.Path], name: str, width: int) -> None:
    show(browser, pages[name], width)
    for unfold in ("", UNFOLD):
        browser.execute_script(unfold)
        assert browser.execute_script("return document.documentElement.scrollWidth") <= width


def test_the_filter_of_findings(browser: Any, pages: Dict[str, pathlib.Path]) -> None:
    show(browser, pages["damaged"])
    in_all = shown_rows(browser, "findings-list")
    errors = len(find_all(browser, "#findings-list tr[data-severity=error]"))
    warning = find(browser, "#findings input[value=warning]")
    warning.click()
    without_warnings = shown_rows(browser, "findings-list")
    assert errors <= without_warnings < in_all
    assert find(browser, "#findings output").text == f"{without_warnings} of {in_all} shown"
    warning.send_keys(Keys.SPACE)
    assert shown_rows(browser, "findings-list") == in_all and find(browser, "#findings output").text == ""

    files = find(browser, "#findings select")
    files.send_keys("channel.ctl")
    chosen = shown_rows(browser, "findings-list")
    assert 0 < chosen < in_all
    text = find(browser, "#findings input[type=search]")
    text.send_keys("no such text")
    assert shown_rows(browser, "findings-list") == 0
    text.clear()
    text.send_keys(" ", Keys.BACKSPACE)
    files.send_keys("all files")
    assert shown_rows(browser, "findings-list") == in_all


def test_the_filter_of_conditions_unfolds_what_it_finds(browser: Any, pages: Dict[str, pathlib.Path]) -> None:
    show(browser, pages["whole"])
    assert shown_rows(browser, "conditions-list-1") == 0
    entity = find(browser, "#conditions input[type=search]")
    entity.send_keys("7")
    assert shown_rows(browser, "conditions-list-1") == 2
    entity.send_keys(Keys.BACKSPACE)
    assert shown_rows(browser, "conditions-list-1") == 0


def test_folding_by_mouse_and_by_keyboard(browser: Any, pages: Dict[str, pathlib.Path]) -> None:
    show(browser, pages["whole"])
    details = find(browser, "#configuration details")
    summary = find(browser, "#configuration details > summary")
    table = find(browser, "#configuration details table")
    for act in (summary.click, lambda: summary.send_keys(Keys.ENTER), lambda: summary.send_keys(Keys.SPACE)):
        before = bool(details.get_attribute("open"))
        act()
        assert bool(details.get_attribute("open")) is not before
        assert is_shown(browser, table) is not before


def test_the_keyboard_reaches_all_and_shows_where_it_is(browser: Any, pages: Dict[str, pathlib.Path]) -> None:
    show(browser, pages["whole"], 360)
    body = find(browser, "body")
    body.send_keys(Keys.TAB)
    first = browser.switch_to.active_element
    assert first.get_attribute("class") == "skip" and first.location["y"] >= 0
    first.send_keys(Keys.ENTER)
    assert browser.execute_script("return document.activeElement.id") == "content"
    reached = set()
    for _ in range(60):
        browser.switch_to.active_element.send_keys(Keys.TAB)
        reached.add(browser.execute_script("return document.activeElement.className || document.activeElement.tagName"))
        name, style = browser.execute_script(
            "return [document.activeElement.tagName, getComputedStyle(document.activeElement).outlineStyle]"
        )
        assert name == "BODY" or style in ("solid", "auto"), name
    assert {"scroll", "SUMMARY", "A"} <= reached, reached


def test_dark_is_dark(browser: Any, pages: Dict[str, pathlib.Path]) -> None:
    colours = {}
    for scheme in ("light", "dark"):
        show(browser, pages["whole"], scheme=scheme)
        browser.execute_script(UNFOLD)
        colours[scheme] = browser.execute_script("""
            const colour = (selector, name) => getComputedStyle(document.querySelector(selector))[name];
            return [colour("body", "backgroundColor"), colour("body", "color"), colour("svg.figure text", "fill"),
                    colour("svg.figure path[style*=accent]", "stroke")];""")
    brightness = {
        scheme: [sum(int(part) for part in colour[4:-1].split(",")) for colour in found]
        for scheme, found in colours.items()
    }
    assert brightness["light"][0] > 600 > 200 > brightness["dark"][0]
    assert all(dark > light for dark, light in zip(brightness["dark"][1:], brightness["light"][1:]))


@pytest.mark.parametrize("scheme", ["light", "dark"])
@pytest.mark.parametrize("name", PAGES)
def test_axe_finds_nothing(browser: Any, axe: str, pages: Dict[str, pathlib.Path], name: str, scheme: str) -> None:
    show(browser, pages[name], scheme=scheme)
    browser.execute_script(UNFOLD)
    browser.execute_script(axe)
    found = browser.execute_async_script("axe.run(document).then(arguments[0])")
    assert found["passes"]
    violations = [(one["id"], one["help"], [node["html"][:200] for node in one["nodes"]][:3]) for one in found["violations"]]
    assert violations == []


def test_without_script_everything_is_there(browser: Any, pages: Dict[str, pathlib.Path]) -> None:
    browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
    try:
        show(browser, pages["whole"])
        assert not any(form.is_displayed() for form in find_all(browser, "form"))
        assert all(row.is_displayed() for row in find_all(browser, "#findings tbody tr"))
        summary = find(browser, "details.material > summary")
        summary.click()
        assert find(browser, "details.material[open] svg.figure")
    finally:
        browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": False})


def test_printed(browser: Any, pages: Dict[str, pathlib.Path], tmp_path: pathlib.Path) -> None:
    show(browser, pages["whole"], scheme="dark")
    options = {"preferCSSPageSize": True, "printBackground": True}
    data = base64.b64decode(browser.execute_cdp_cmd("Page.printToPDF", options)["data"])
    assert data.startswith(b"%PDF")
    sheets = [[float(number) for number in box.split()] for box in re.findall(rb"/MediaBox \[([^]]*)\]", data)]
    assert sheets and all(sheet == pytest.approx([0, 0, *A4], abs=1) for sheet in sheets), sheets
    assert not find_all(browser, "#configuration details[open]")
    if not shutil.which("pdftotext"):
        return
    (tmp_path / "page.pdf").write_bytes(data)
    text = subprocess.run(
        ["pdftotext", "-layout", str(tmp_path / "page.pdf"), "-"], capture_output=True, text=True, check=True
    ).stdout
    assert "relaxation" in text.lower() and "NumberOfThreads" in text
