<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="ru">
<context>
    <name>tadata</name>
    <message>
        <source>неизвестный параметр «%1»</source>
        <translation>unknown option &quot;%1&quot;</translation>
    </message>
    <message>
        <source>параметр %1 не принимает значения</source>
        <translation>option %1 takes no value</translation>
    </message>
    <message>
        <source>нет значения после «%1»</source>
        <translation>no value after &quot;%1&quot;</translation>
    </message>
    <message>
        <source>Невозможно записать в стандартный вывод</source>
        <translation>Cannot write to standard output</translation>
    </message>
    <message>
        <source>параметр --%1 задан дважды</source>
        <translation>option --%1 is given twice</translation>
    </message>
    <message>
        <source>не задан параметр --%1</source>
        <translation>option --%1 is missing</translation>
    </message>
    <message>
        <source>--separator: нужен непустой текст без перевода строки</source>
        <translation>--separator: a text that is not empty and has no line end is needed</translation>
    </message>
    <message>
        <source>--decimals: нужно число от 0 до %1: «%2»</source>
        <translation>--decimals: a number from 0 to %1 is needed: &quot;%2&quot;</translation>
    </message>
    <message>
        <source>«%1» — не целое число</source>
        <translation>&quot;%1&quot; is not an integer</translation>
    </message>
    <message>
        <source>«%1» — не число</source>
        <translation>&quot;%1&quot; is not a number</translation>
    </message>
    <message>
        <source>полей %1, а нужно от %2 до %3</source>
        <translation>fields: %1, needed: %2 to %3</translation>
    </message>
    <message>
        <source>Невозможно открыть файл %1</source>
        <translation>Cannot open file %1</translation>
    </message>
    <message>
        <source>%1: первая строка — сделка, а должна быть заголовком</source>
        <translation>%1: the first line is a deal, but must be a heading</translation>
    </message>
    <message>
        <source>%1, строка %2: %3</source>
        <translation>%1, line %2: %3</translation>
    </message>
    <message>
        <source>--%1: нужна дата вида 2024-01-31: «%2»</source>
        <translation>--%1: a date such as 2024-01-31 is needed: &quot;%2&quot;</translation>
    </message>
    <message>
        <source>--timeframe: бывает %1: «%2»</source>
        <translation>--timeframe: must be one of %1: &quot;%2&quot;</translation>
    </message>
    <message>
        <source>--%1: вид «%2» не называет всего, что нужно: %3</source>
        <translation>--%1: the form &quot;%2&quot; does not name all that is needed: %3</translation>
    </message>
    <message>
        <source>--to: раньше, чем --from</source>
        <translation>--to: earlier than --from</translation>
    </message>
    <message>
        <source>нужен один файл</source>
        <translation>one file is needed</translation>
    </message>
    <message>
        <source>Нет каталога %1</source>
        <translation>There is no directory %1</translation>
    </message>
    <message>
        <source>--columns: неизвестное значение «%1»; бывают date, time, open, high, low, close, volume, value, oi</source>
        <translation>--columns: unknown role &quot;%1&quot;; there are date, time, open, high, low, close, volume, value, oi</translation>
    </message>
    <message>
        <source>--columns: нужен номер столбца, считая от 0: «%1»</source>
        <translation>--columns: a column number, counted from 0, is needed: &quot;%1&quot;</translation>
    </message>
    <message>
        <source>--columns: «%1» задано дважды</source>
        <translation>--columns: &quot;%1&quot; is given twice</translation>
    </message>
    <message>
        <source>--columns: столбец %1 назначен дважды</source>
        <translation>--columns: column %1 is assigned twice</translation>
    </message>
    <message>
        <source>--columns: не задан столбец «%1»</source>
        <translation>--columns: the column &quot;%1&quot; is missing</translation>
    </message>
    <message>
        <source>--timeframe: бывает 60 или 1: «%1»</source>
        <translation>--timeframe: must be 60 or 1: &quot;%1&quot;</translation>
    </message>
    <message>
        <source>--%1: бывает %2: «%3»</source>
        <translation>--%1: must be one of %2: &quot;%3&quot;</translation>
    </message>
    <message>
        <source>инструмента %1/%2/%3 нет в справочнике: задайте --decimals, число знаков после точки в ценах</source>
        <translation>the reference data do not hold the security %1/%2/%3: give --decimals, the number of digits after the point in prices</translation>
    </message>
    <message>
        <source>лишнее слово «%1»</source>
        <translation>superfluous word &quot;%1&quot;</translation>
    </message>
    <message>
        <source>нет команды</source>
        <translation>there is no command</translation>
    </message>
    <message>
        <source>неизвестная команда «%1»</source>
        <translation>unknown command &quot;%1&quot;</translation>
    </message>
    <message>
        <source>tadata: %1
Подсказка: tadata --help</source>
        <translation>tadata: %1
Hint: tadata --help</translation>
    </message>
    <message>
        <source>--series: нужны три кода через «/», ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ, и ни один не может быть пустым, «.» или «..»: «%1»</source>
        <translation>--series: three codes with &quot;/&quot; between them are needed, VENUE/BOARD/SECURITY, none of them empty, &quot;.&quot; or &quot;..&quot;: &quot;%1&quot;</translation>
    </message>
    <message>
        <source>--store: нужен каталог</source>
        <translation>--store: a directory is needed</translation>
    </message>
    <message>
        <source>tadata — бары для графиков терминала из командной строки

Использование:
  tadata import ФАЙЛ ...   импортировать бары из текстового файла
  tadata export ФАЙЛ ...   записать хранимые бары в текстовый файл
  tadata list ...          показать, что хранится
  tadata КОМАНДА --help    всё о команде
  tadata --version         версия

Код завершения: 0 — сделано; 1 — не удалось, причина в стандартном выводе ошибок;
2 — неверная командная строка.

Сообщения — на языке пользователя или на том, который назван в переменной окружения
TADATA_LANGUAGE: ru или en.
</source>
        <translation>tadata - bars for the charts of the terminal, from the command line

Usage:
  tadata import FILE ...   import bars from a text file
  tadata export FILE ...   write stored bars to a text file
  tadata list ...          show what is stored
  tadata COMMAND --help    all about a command
  tadata --version         the version

The messages are in the language of the user, or in the one that the environment variable
TADATA_LANGUAGE names: ru or en.

Exit code: 0 - done; 1 - failed, standard error says why; 2 - the command line is wrong.
</translation>
    </message>
    <message>
        <source>Невозможно прочитать файл %1: %2</source>
        <translation>Cannot read file %1: %2</translation>
    </message>
    <message>
        <source>--from: %1 позже, чем сегодня, %2: выгружать нечего</source>
        <translation>--from: %1 is after today, %2: there is nothing to export</translation>
    </message>
    <message>
        <source>Невозможно открыть файл %1: его баров в выгрузке нет</source>
        <translation>Cannot open file %1: its bars are not in the export</translation>
    </message>
    <message>
        <source>Использование: tadata export ФАЙЛ --series ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ
                             --from ДЕНЬ --to ДЕНЬ [параметры]

Записывает бары серии в текстовый файл. Файл, который уже есть, заменяется. За каждую
строку хранилища пишется бар, каким он стал к ней, и ещё раз — когда он закончен:
законченный бар — последняя строка со своим временем. Файл дня, который нельзя открыть,
назван в стандартном выводе ошибок, и код завершения тогда 1.

  --series КОДЫ        серия: коды площадки, режима торгов и инструмента через «/»
  --from ДЕНЬ          первый день, например 2024-01-31; не позже сегодняшнего
  --to ДЕНЬ            последний день; дни после сегодняшнего пропускаются
  --timeframe СЕКУНДЫ  длина бара: 1, 60 (по умолчанию), 300, 600, 1800, 3600, 86400
  --line-format СПИСОК столбцы через запятую: TICKER, PER, DATE, TIME, OPEN, HIGH, LOW,
                       CLOSE, VOL, VAL, OPEN_INT; по умолчанию все. Порядок столбцов
                       всегда этот; строка кончается после последнего в списке
  --separator ТЕКСТ    разделитель столбцов или слово comma, semicolon, space;
                       по умолчанию запятая
  --date-format ВИД    вид даты из d, M и yy или yyyy; по умолчанию yyyyMMdd
  --time-format ВИД    вид времени из h, m, s и z; по умолчанию hhmmss
  --no-header          без строки заголовка
  --store КАТАЛОГ      каталог с папками площадок; по умолчанию хранилище терминала
  --deals ФАЙЛ         сделки сегодняшнего дня: moment_ms_utc,price,quantity и, если
                       есть, open_interest и value; первая строка — заголовок
  --today ДЕНЬ         какой день считать сегодняшним: дни до него берутся из хранилища,
                       он сам — из сделок
  --reference ФАЙЛ     справочник площадок, режимов и инструментов; по умолчанию
                       справочник терминала

Пример:
  tadata export eurusd.txt --series ORIENT/FX/EURUSD --from 2024-01-01 --to 2024-01-31 \
         --timeframe 300
</source>
        <translation>Usage: tadata export FILE --series VENUE/BOARD/SECURITY
                          --from DAY --to DAY [options]

Writes the bars of a series to a text file, which is replaced when it exists. For each line of
the store the bar is written as it stands then, and once more when it is finished: the last line
of each time is the finished bar. A day file that cannot be opened is named on standard error,
and the exit status is then 1.

  --series CODES       the series: codes of venue, board and security with &quot;/&quot; between them
  --from DAY           the first day, such as 2024-01-31; not after today
  --to DAY             the last day; days after today are passed over
  --timeframe SECONDS  length of a bar: 1, 60 (default), 300, 600, 1800, 3600, 86400
  --line-format NAMES  columns separated by commas: TICKER, PER, DATE, TIME, OPEN, HIGH, LOW,
                       CLOSE, VOL, VAL, OPEN_INT; by default all of them. The columns always
                       stand in this order; the line ends after the last one of the list
  --separator TEXT     text between columns, or one of the words comma, semicolon, space;
                       by default a comma
  --date-format FORM   a date made of d, M and yy or yyyy; by default yyyyMMdd
  --time-format FORM   a time made of h, m, s and z; by default hhmmss
  --no-header          no line with the names of the columns
  --store DIR          directory with the folders of the venues; by default the terminal&apos;s store
  --deals FILE         the deals of today: moment_ms_utc,price,quantity and, if there are any,
                       open_interest and value; the first line is a heading
  --today DAY          which day counts as today: days before it are taken from the store,
                       it itself from the deals
  --reference FILE     venues, boards and securities; by default those of the terminal

Example:
  tadata export eurusd.txt --series ORIENT/FX/EURUSD --from 2024-01-01 --to 2024-01-31 \
         --timeframe 300
</translation>
    </message>
    <message>
        <source>Ни одного бара не импортировано: в файле %1 их нет</source>
        <translation>No bar was imported: file %1 holds none</translation>
    </message>
    <message>
        <source>Использование: tadata import ФАЙЛ --series ПЛОЩАДКА/РЕЖИМ/ИНСТРУМЕНТ
                             --columns РОЛЬ=СТОЛБЕЦ,... [параметры]

Импортирует бары из текстового файла. Файл дня заменяется целиком каждый раз, когда в
файле начинается этот день. Если в файле нет ни одного бара, об этом сказано в стандартном
выводе ошибок, код завершения 0.

  --series КОДЫ        серия: коды площадки, режима торгов и инструмента через «/»
  --columns СПИСОК     какой столбец что несёт, считая столбцы от 0; обязательны date,
                       time, open, high, low, close; могут быть volume (объём в штуках),
                       value (объём в деньгах), oi (открытый интерес)
  --timeframe 60|1     длина бара в секундах; по умолчанию 60. Из секундных баров
                       строятся и минутные, в отдельный файл
  --separator ТЕКСТ    разделитель столбцов или слово comma, semicolon, space;
                       по умолчанию запятая
  --date-format ВИД    yyyyMMdd (по умолчанию), yyMMdd, ddMMyy, dd.MM.yy или dd/MM/yy
  --time-format ВИД    hhmmss (по умолчанию), hhmm, hh:mm:ss или hh:mm
  --no-header          первая строка — уже бар, а не заголовок
  --decimals ЧИСЛО     знаков после точки в ценах, от 0 до 15; по умолчанию как в
                       справочнике инструментов
  --store КАТАЛОГ      каталог с папками площадок; по умолчанию хранилище терминала
  --reference ФАЙЛ     справочник площадок, режимов и инструментов; по умолчанию
                       справочник терминала

Пример:
  tadata import eurusd.csv --series ORIENT/FX/EURUSD --separator semicolon --no-header \
         --date-format dd.MM.yy --time-format hh:mm \
         --columns date=0,time=1,open=2,high=3,low=4,close=5,volume=6
</source>
        <translation>Usage: tadata import FILE --series VENUE/BOARD/SECURITY
                          --columns ROLE=COLUMN,... [options]

Imports bars from a text file. The file of a day is replaced as a whole each time the input
comes to that day. That the input holds no bar is said on standard error, with exit status 0.

  --series CODES       the series: codes of venue, board and security with &quot;/&quot; between them
  --columns LIST       what each column carries, counted from 0; mandatory are date, time,
                       open, high, low, close; there can be volume (in pieces), value (in
                       money), oi (open interest)
  --timeframe 60|1     length of a bar in seconds; by default 60. Second bars also make minute
                       bars, in a file of their own
  --separator TEXT     text between columns, or one of the words comma, semicolon, space;
                       by default a comma
  --date-format FORM   yyyyMMdd (default), yyMMdd, ddMMyy, dd.MM.yy or dd/MM/yy
  --time-format FORM   hhmmss (default), hhmm, hh:mm:ss or hh:mm
  --no-header          the first line is a bar, not a heading
  --decimals N         digits after the point in prices, from 0 to 15; by default as the
                       reference data say
  --store DIR          directory with the folders of the venues; by default the terminal&apos;s store
  --reference FILE     venues, boards and securities; by default those of the terminal

Example:
  tadata import eurusd.csv --series ORIENT/FX/EURUSD --separator semicolon --no-header \
         --date-format dd.MM.yy --time-format hh:mm \
         --columns date=0,time=1,open=2,high=3,low=4,close=5,volume=6
</translation>
    </message>
    <message>
        <source>Невозможно прочитать каталог %1: того, что в нём, в списке нет</source>
        <translation>Cannot read directory %1: what is in it is not in the list</translation>
    </message>
    <message>
        <source>Использование: tadata list [--store КАТАЛОГ]

Печатает по строке на каждую серию и таймфрейм, через табуляцию: серия, таймфрейм в
секундах, число файлов дней, первый и последний день, байты. Управляющие символы в кодах
печатаются в виде \x0a и \u2028. Каталог, который нельзя прочитать, назван в стандартном
выводе ошибок; код завершения тогда 1, остальное напечатано.

  --store КАТАЛОГ      каталог с папками площадок; по умолчанию хранилище терминала
</source>
        <translation>Usage: tadata list [--store DIR]

Prints one line for each series and timeframe, separated by tabs: series, timeframe in seconds,
number of day files, first and last day, bytes. Control characters in codes are printed as \x0a
and \u2028. A directory that cannot be read is named on standard error; the exit status is then
1, and the rest is printed.

  --store DIR          directory with the folders of the venues; by default the terminal&apos;s store
</translation>
    </message>
    <message>
        <source>--series: в кодах не может быть управляющих символов и того, что не UTF-8: «%1»</source>
        <translation>--series: codes cannot have control characters or what is no UTF-8: &quot;%1&quot;</translation>
    </message>
</context>
</TS>
