' A host in a script whose fruits are searched by name, the current column of its grid; names have no digits.
Option Explicit

Class Columna
    Public Caption
    Public DataField
End Class

Class Columnas
    Public Todas
    Public Property Get Count
        Count = UBound(Todas) + 1
    End Property
    Public Property Get Col
        Col = 1
    End Property
    Public Function Item(numero)
        Set Item = Todas(numero)
    End Function
End Class

Class Frutas
    Public Guardado
    Public Property Get sClassName
        sClassName = "frutas"
    End Property
    Public Function ValidaKey(caja, tecla)
        ValidaKey = Not IsNumeric(Chr(tecla))
    End Function
    Public Function ValidaDefinedSize(caja)
        ValidaDefinedSize = 10
    End Function
    Public Function ValidaValue(caja)
        WScript.Echo "ValidaValue " & caja.Name & " " & caja.Index & " [" & caja.Text & "]"
        ValidaValue = True
    End Function
    Public Function CreateFilter(control, indice)
        Dim i
        For i = 0 To control.ListCount - 1
            If i > 0 Then CreateFilter = CreateFilter & ", "
            CreateFilter = CreateFilter & control.List(i)
        Next
        CreateFilter = control.DataField & " in (" & CreateFilter & ")"
        WScript.Echo "CreateFilter " & control.Name & " " & TypeName(indice) & " " & indice
    End Function
    Public Sub SetFilter(texto, hueco)
        WScript.Echo "SetFilter " & texto & " " & hueco
        Guardado = texto
    End Sub
    Public Function GetFilter(hueco)
        GetFilter = Guardado
    End Function
    Public Sub AplyFilter(texto)
        WScript.Echo "AplyFilter [" & texto & "]"
    End Sub
    Public Sub AceptarBuscar
        WScript.Echo "AceptarBuscar"
    End Sub
End Class

Function NuevaColumna(titulo, campo)
    Set NuevaColumna = New Columna
    NuevaColumna.Caption = titulo
    NuevaColumna.DataField = campo
End Function

Dim datos, rejilla
Set datos = New Frutas
Set rejilla = New Columnas
rejilla.Todas = Array(NuevaColumna("C" & Chr(243) & "digo", "codigo"), NuevaColumna("Nombre", "nombre"))
CreateObject("Tamvelo.ClsShowSerch").ShowBuscar datos, datos, rejilla
